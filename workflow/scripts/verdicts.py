# SPDX-License-Identifier: MIT
"""What became of the plates, by the exit codes of their steps and the table of their samples."""

from __future__ import annotations

import csv
import os
from collections.abc import Iterable, Iterator

ANSWERS = ("0", "2", "3")  # of lanetools, about the plate; other codes are breakdowns
DONE = ("0", "3")  # 3: done, but not for all samples


def code_of(folder: str, step: str) -> str:
    """The exit code of a step, empty when the step did not end."""
    try:
        with open(os.path.join(folder, step + ".code"), encoding="ascii") as file:
            return file.read().strip()
    except FileNotFoundError:
        return ""


def samples_of(folder: str) -> list[dict[str, str]]:
    """The rows of the plate's summary, none when there is no summary."""
    try:
        with open(os.path.join(folder, "summary.tsv"), newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE))
    except FileNotFoundError:
        return []


def not_imported(folder: str) -> int:
    """The number of sources that did not become samples."""
    try:
        with open(os.path.join(folder, "import.log"), encoding="utf-8", errors="replace") as file:
            return sum(line.split("\t")[1:2] == ["-"] for line in file)
    except FileNotFoundError:
        return 0


def unread_steps(folder: str, steps: Iterable[str]) -> list[str]:
    """The steps that could not read all of the plate: those that say so with a 3 that no sample explains."""
    all_called = all(sample["state"] == "called" for sample in samples_of(folder))
    explained = ("import", "call") if all_called else ("import", "call", "check", "export")
    return [step for step in steps if code_of(folder, step) == "3" and not step.startswith(explained)]


def verdict(folder: str, steps: Iterable[str], min_pass: float) -> str:
    """Why the plate of this folder did not pass; empty when it did."""
    for step in steps:
        code = code_of(folder, step)
        if not code:
            return f"{step} did not end"
        if code not in DONE:
            return f"{step} {'was refused' if code == '2' else 'broke down with code ' + code}, see {folder}/{step}.log"
    samples = samples_of(folder)
    called = sum(sample["state"] == "called" for sample in samples)
    wanted = len(samples) + not_imported(folder)
    if called * 100 < min_pass * wanted or not samples:
        return f"{called} of {wanted} samples called, see {folder}"
    for step in unread_steps(folder, steps):
        return f"{step} could not read all of it, see {folder}/{step}.log"
    return ""


def not_passed(output: str, plates: Iterable[str], steps: Iterable[str], min_pass: float) -> Iterator[str]:
    """A line for each plate that did not pass."""
    for plate in plates:
        if reason := verdict(os.path.join(output, plate), steps, min_pass):
            yield f"Plate {plate} did not pass: {reason}"


def forget_breakdowns(output: str, plates: Iterable[str], steps: Iterable[str]) -> None:
    """Removes the codes of steps that broke down or could not read all, so that the next start repeats them."""
    for plate in plates:
        folder = os.path.join(output, plate)
        unread = unread_steps(folder, steps)
        for step in steps:
            if step in unread or code_of(folder, step) not in ("", *ANSWERS):
                os.remove(os.path.join(folder, step + ".code"))
