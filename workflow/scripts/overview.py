# SPDX-License-Identifier: MIT
"""One page over all plates: a row per plate with its states and figures, and links to what belongs to it."""

import os
from html import escape
from statistics import median

from made import claim
from verdicts import not_imported, samples_of, verdict

STYLE = """body { font: 15px/1.5 system-ui, sans-serif; margin: 2rem; color: #1c2430 }
table { border-collapse: collapse } td, th { padding: .3rem .8rem; border-bottom: 1px solid #dde2e8; text-align: left }
td.number { text-align: right } tr.failed { background: #fdeae6 }"""


def figures(folder: str) -> dict[str, int | str]:
    """What the overview shows of a plate."""
    samples = samples_of(folder)
    states = [sample["state"] for sample in samples]
    lengths = [int(sample["crl"]) for sample in samples if sample["crl"]]
    return {
        **{state.capitalize(): states.count(state) for state in ("called", "failed", "missing", "damaged")},
        "Not imported": not_imported(folder),
        "Median contiguous read length": round(median(lengths)) if lengths else "",
        "Bases at Q20": sum(int(sample["q20"] or 0) for sample in samples),
    }


def links(plate: str, folder: str) -> str:
    """Links to the files of a plate, relative to the page."""
    names = {"report.html": "report", "summary.tsv": "summary", "call.log": "log"}
    return " ".join(f'<a href="{escape(plate)}/{name}">{text}</a>'
                    for name, text in names.items() if os.path.exists(os.path.join(folder, name)))


def row(plate: str, folder: str, reason: str) -> str:
    """The plate's row; `reason` is empty when it passed."""
    cells = "".join(f'<td class="number">{value}</td>' for value in figures(folder).values())
    return (f'<tr class="{"failed" if reason else "passed"}"><td>{escape(plate)}</td><td>{escape(reason or "passed")}</td>'
            f"{cells}<td>{links(plate, folder)}</td></tr>")


def page(output: str, plates: list[str], steps: list[str], min_pass: float) -> str:
    """The page as HTML."""
    folders = {plate: os.path.join(output, plate) for plate in plates}
    heads = "".join(f"<th>{name}</th>" for name in ("Plate", "Verdict", *figures(output), ""))
    rows = "\n".join(row(plate, folder, verdict(folder, steps, min_pass)) for plate, folder in folders.items())
    return (f'<!doctype html>\n<html lang="en"><head><meta charset="utf-8"><title>Plates</title><style>{STYLE}</style></head>\n'
            f"<body><h1>{len(plates)} plates</h1>\n<table><thead><tr>{heads}</tr></thead>\n<tbody>\n{rows}\n</tbody></table>\n"
            "</body></html>\n")


task = snakemake  # type: ignore # noqa: F821 - Snakemake gives it
claim(task.output[0])
with open(task.output[0], "w", encoding="utf-8") as file:
    file.write(page(os.path.dirname(task.output[0]), task.params.plates, task.params.steps, task.params.min_pass))
