# SPDX-License-Identifier: MIT
"""What of an output folder is the workflow's own. Nothing else in it is ever removed or overwritten.

The output folder and each plate's folder in it have a file made.stamp: the line FIRST_LINE, then the names of the files and
folders that the workflow has made there, one per line. A step adds a name before it makes the file; own.sh does the same for
the steps that are shell scripts."""

from __future__ import annotations

import functools
import os
import re
from collections.abc import Iterable, Iterator
from typing import Any

STAMP = "made.stamp"
FIRST_LINE = "Made here by the workflow of Lanewright:"
# What a step makes in a plate's folder; an export makes a folder with the name of its format.
PRODUCTS = {"import": "raw", "call": "called", "check": "summary.tsv", "report": "report.html"}


def files_of_plate(steps: Iterable[str]) -> list[str]:
    """The names in a plate's folder that a run of these steps writes."""
    return [name for step in steps for name in (PRODUCTS.get(step, step.removeprefix("export-")), f"{step}.code", f"{step}.log",
                                                *(("called.stamp", "called.part") if step == "call" else ()),
                                                *(("raw.stamp",) if step == "import" else ()))]


def files_of_output(config: dict[str, Any]) -> list[str]:
    """The names in the output folder, besides those of plates, that a run with these settings writes."""
    page = ["multiqc_report.html", "multiqc_data", "multiqc.log", "summaries"] if config["multiqc"] else []
    return ["plates.html", "plates.log", "passed", "verdict.log", *page]


def first_lines(path: str, count: int) -> list[str]:
    """Up to this many lines of a text, none if it cannot be read as one."""
    try:
        with open(path, encoding="utf-8", errors="replace") as file:
            return [line.rstrip("\n") for line, _ in zip(file, range(count))]
    except (FileNotFoundError, NotADirectoryError, IsADirectoryError):
        return []


def made_by_earlier_plate(folder: str) -> set[str]:
    """The names that a version without made.stamp has made in a plate's folder: it left a stamp next to the samples, and a
    log of each step."""
    stamped = [step for step in ("import", "call")
               if re.match(r"[0-9a-f]{16}( |$)", "".join(first_lines(os.path.join(folder, PRODUCTS[step] + ".stamp"), 1)))]
    logged = [name.removesuffix(".log") for name in os.listdir(folder) if name.endswith(".log")] if stamped else []
    return set(files_of_plate([*stamped, *(step for step in logged if step in ("check", "report") or step.startswith("export-"))]))


def made_by_earlier_output(output: str) -> set[str]:
    """The same for the output folder."""
    with os.scandir(output) as entries:
        if not any(entry.is_dir() and made_by_earlier_plate(entry.path) for entry in entries):
            return set()
    made: set[str] = set()
    if "<title>Plates</title>" in "".join(first_lines(os.path.join(output, "plates.html"), 2)):
        made |= {"plates.html", "plates.log", "passed", "verdict.log"}
    if os.path.exists(os.path.join(output, "multiqc.log")):
        made |= {"multiqc_report.html", "multiqc_data", "multiqc.log", "summaries"}
    return made


def made_in(folder: str, is_plate: bool) -> set[str]:
    """The names of what the workflow has made in this folder."""
    if not os.path.isdir(folder):
        return set()
    lines = first_lines(os.path.join(folder, STAMP), 10000)
    if lines:
        return {STAMP, *lines[1:]} if lines[0] == FIRST_LINE else set()
    return made_by_earlier_plate(folder) if is_plate else made_by_earlier_output(folder)


def is_empty(path: str) -> bool:
    """True of an empty file or folder."""
    if os.path.islink(path):
        return False
    return not os.listdir(path) if os.path.isdir(path) else os.path.isfile(path) and not os.path.getsize(path)


def taken_names(folder: str, names: Iterable[str]) -> list[str]:
    """Those of the names that exist in the folder, which need not exist itself."""
    try:
        return sorted({*names, STAMP}.intersection(os.listdir(folder)))
    except FileNotFoundError:
        return []


def foreign_files(folder: str, taken: Iterable[str], is_plate: bool) -> Iterator[str]:
    """The paths of those names in the folder that are not empty and not the workflow's."""
    made = made_in(folder, is_plate) if taken else set()
    return (path for path in (os.path.join(folder, name) for name in taken if name not in made) if not is_empty(path))


@functools.lru_cache(maxsize=None)
def identity(path: str) -> tuple[int, int] | None:
    """The device and inode, which are those of a folder by whatever path."""
    try:
        status = os.stat(path)
    except OSError:
        return None
    return status.st_dev, status.st_ino


def with_parents(path: str) -> Iterator[str]:
    """The path, all links resolved, and all folders above it."""
    path = os.path.realpath(path)
    yield path
    while path != os.path.dirname(path):
        path = os.path.dirname(path)
        yield path


def overlaps(places: Iterable[str], sources: Iterable[str]) -> Iterator[str]:
    """A text for each place that is, contains or lies in a source."""
    sources = list(sources)
    exact = {identity(source): source for source in sources}
    above = {identity(parent): source for source in sources for parent in with_parents(source)}
    for place in places:
        itself, *parents = [identity(folder) for folder in with_parents(place)]
        if itself and itself in exact:
            yield f"{place} is {exact[itself]} itself"
        elif itself and itself in above:
            yield f"{place} contains {above[itself]}"
        else:
            yield from (f"{place} is inside {exact[parent]}" for parent in parents if parent in exact)


def check_output(config: dict[str, Any], plates: dict[str, str], steps: list[str]) -> None:
    """Raises ValueError if the workflow could touch what is not its own."""
    output, top = config["output"], files_of_output(config)
    inner = files_of_plate(steps)
    faults = [f"{plates[name]} has the name of a file of the workflow: give it another one in a sheet"
              for name in [*top, STAMP] if name in plates]
    folders = {output: False, **{os.path.join(output, plate): True for plate in plates}}
    faults += [f"{folder} is not a folder" for folder in folders if os.path.lexists(folder) and not os.path.isdir(folder)]
    if not faults:
        taken = {folder: taken_names(folder, inner if is_plate else top) for folder, is_plate in folders.items()}
        # All that is not a link is inside the output folder.
        links = [path for folder, names in taken.items() for path in (folder, *(os.path.join(folder, name) for name in names))
                 if os.path.islink(path)]
        faults += [f"{text}: the output must be apart from the plates" for text in overlaps([output, *links], plates.values())]
        faults += [f"{path} exists and was not made by this workflow: move it, or name another output"
                   for folder, is_plate in folders.items() for path in foreign_files(folder, taken[folder], is_plate)]
    if faults:
        raise ValueError(faults[0] + (f" (and {len(faults) - 1} more like this)" if faults[1:] else ""))


def begin(output: str, plates: Iterable[str]) -> None:
    """Gives each folder its made.stamp, so that from now on only its lines count. For an output that was checked."""
    for folder, is_plate in [(output, False), *((os.path.join(output, plate), True) for plate in plates)]:
        stamp = os.path.join(folder, STAMP)
        if not first_lines(stamp, 1):
            os.makedirs(folder, exist_ok=True)
            text = "".join(f"{line}\n" for line in (FIRST_LINE, *sorted(made_in(folder, is_plate))))
            with open(stamp, "w", encoding="utf-8") as file:
                file.write(text)


def claim(path: str) -> None:
    """Notes a file of the output folder as the workflow's; ends this step if it exists and is not."""
    folder, name = os.path.split(path)
    if name in made_in(folder, False):
        return
    if os.path.lexists(path) and not is_empty(path):
        raise SystemExit(f"{path} exists and was not made by this workflow: it stays as it is")
    with open(os.path.join(folder, STAMP), "a", encoding="utf-8") as file:
        file.write(name + "\n")
