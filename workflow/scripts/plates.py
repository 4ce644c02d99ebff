# SPDX-License-Identifier: MIT
"""The plates of a configuration, each with a key of its own that names its folders."""

from __future__ import annotations

import csv
import os
import re
from collections import Counter
from hashlib import sha256
from typing import Any


def read_sheet(path: str) -> list[tuple[str, str]]:
    """Paths and names of a sheet; the name is empty where the sheet has none."""
    with open(path, newline="", encoding="utf-8-sig") as file:
        rows = csv.DictReader(file, delimiter="\t")
        if "path" not in (rows.fieldnames or []):
            raise ValueError(f"{path}: the header has no column 'path'")
        return [(row["path"], row.get("name") or "") for row in rows if row["path"]]


def safe_name(name: str) -> str:
    """The name as that of a folder, with room for what is put after it."""
    return re.sub(r"[^A-Za-z0-9_+.-]|^[.-]", "_", name)[:80] or "_"


def plates_of(config: dict[str, Any]) -> dict[str, str]:
    """The plates' folders by key, which is the plate's name. Names that occur more than once get letters of their path
    after them, which keep them apart in whatever order the plates are given; a folder counts once."""
    given = config["plates"]
    listed = read_sheet(given) if isinstance(given, str) else [(path, "") for path in given]
    names: dict[str, str] = {}
    for path, name in listed:
        if not os.path.isdir(path):
            raise ValueError(f"{path} is no folder")
        folder = os.path.realpath(path)
        names.setdefault(folder, safe_name(name or os.path.basename(folder)))
    if not names:
        raise ValueError("there are no plates")
    count = Counter(names.values())
    plates = {name if count[name] == 1 else f"{name}-{sha256(os.fsencode(folder)).hexdigest()[:10]}": folder
              for folder, name in names.items()}
    for folder in names.keys() - plates.values():
        raise ValueError(f"the name {names[folder]} of {folder} is the one that another plate gets: give it another one in a sheet")
    return plates


def fingerprint(folder: str) -> str:
    """Another text whenever a sample of the folder comes, goes or changes. The folder's own time would not do: each call
    of the plate writes its logs there."""
    state = sha256()
    with os.scandir(folder) as entries:
        for entry in sorted(entries, key=lambda entry: entry.name):
            if entry.name.lower().endswith((".rsd", ".esd", ".ab1", ".abi")):
                status = entry.stat()
                state.update(os.fsencode(f"{entry.name}/{status.st_size}/{status.st_mtime_ns}/"))
    return state.hexdigest()[:16]
