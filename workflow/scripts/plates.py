# SPDX-License-Identifier: MIT
"""The plates of a configuration, each with a key of its own that names its folders."""

from __future__ import annotations

import csv
import os
import re
from typing import Any


def read_sheet(path: str) -> list[tuple[str, str]]:
    """Paths and names of a sheet; the name is the folder's where the sheet has none."""
    with open(path, newline="", encoding="utf-8-sig") as file:
        rows = csv.DictReader(file, delimiter="\t")
        if "path" not in (rows.fieldnames or []):
            raise ValueError(f"{path}: the header has no column 'path'")
        return [(row["path"], row.get("name") or "") for row in rows if row["path"]]


def plates_of(config: dict[str, Any]) -> dict[str, str]:
    """The plates' folders by key. Plates of one name get keys that keep them apart; a folder counts once."""
    given = config["plates"]
    listed = read_sheet(given) if isinstance(given, str) else [(path, "") for path in given]
    plates: dict[str, str] = {}
    for path, name in listed:
        folder = os.path.realpath(path)
        if folder in plates.values():
            continue
        if not os.path.isdir(folder):
            raise ValueError(f"{path} is no folder")
        safe = re.sub(r"[^A-Za-z0-9_+.-]|^[.-]", "_", name or os.path.basename(folder))[:90] or "_"  # leaves room in names of files
        key, number = safe, 1
        while key in plates:
            number += 1
            key = f"{safe}-{number}"
        plates[key] = folder
    if not plates:
        raise ValueError("there are no plates")
    return plates
