# SPDX-License-Identifier: MIT
"""One page over all plates: a row per plate with its states and figures, and links to what belongs to it."""

from __future__ import annotations

import html
import json
import os
from statistics import median

STYLE = """body { font: 15px/1.5 system-ui, sans-serif; margin: 2rem; color: #1c2430 }
table { border-collapse: collapse } td, th { padding: .3rem .8rem; border-bottom: 1px solid #dde2e8; text-align: left }
td.number { text-align: right } tr.failed { background: #fdeae6 }"""


def figures(path: str) -> dict:
    """What the overview shows of a plate's summary.json."""
    with open(path, encoding="utf-8") as file:
        samples = json.load(file)["samples"]
    states = [sample["state"] for sample in samples]
    lengths = [sample["crl"] for sample in samples if sample["crl"] is not None]
    return {
        **{state: states.count(state) for state in ("called", "failed", "missing", "damaged")},
        "Median contiguous read length": round(median(lengths)) if lengths else "",
        "Bases at Q20": sum(sample["q20"] or 0 for sample in samples),
    }


def row(plate: str, folder: str) -> str:
    """The plate's row, with links relative to the page."""
    with open(os.path.join(folder, "summary.code"), encoding="utf-8") as file:
        passed = file.read().strip() == "0"
    cells = "".join(f'<td class="number">{value}</td>' for value in figures(os.path.join(folder, "summary.json")).values())
    links = " ".join(f'<a href="{html.escape(plate)}/{name}">{text}</a>'
                     for name, text in (("report.html", "report"), ("summary.tsv", "summary"), ("call.log", "log")))
    return (f'<tr class="{"passed" if passed else "failed"}"><td>{html.escape(plate)}</td>'
            f'<td>{"passed" if passed else "did not pass"}</td>{cells}<td>{links}</td></tr>')


def page(plates: list[str], output: str) -> str:
    """The page as HTML."""
    folders = [os.path.join(output, plate) for plate in plates]
    names = ["Plate", "Verdict", *(name.capitalize() if name.islower() else name
                                   for name in figures(os.path.join(folders[0], "summary.json"))), ""]
    head = "".join(f"<th>{html.escape(name)}</th>" for name in names)
    rows = "\n".join(row(plate, folder) for plate, folder in zip(plates, folders))
    return (f'<!doctype html>\n<html lang="en"><head><meta charset="utf-8"><title>Plates</title><style>{STYLE}</style></head>\n'
            f"<body><h1>{len(plates)} plates</h1>\n<table><thead><tr>{head}</tr></thead>\n<tbody>\n{rows}\n</tbody></table>\n"
            "</body></html>\n")


if "snakemake" in globals():
    target = snakemake.output[0]  # noqa: F821 - Snakemake gives it
    with open(target, "w", encoding="utf-8") as out:
        out.write(page(snakemake.params.plates, os.path.dirname(target)))  # noqa: F821
