# SPDX-License-Identifier: MIT
"""The last 632 bytes of a sample file; the table of all fields is in src/samplestore/RsdTrailer.h."""

from __future__ import annotations

import struct
from typing import Any

from lanewright.tree import decode_text

SIZE = 632
TOTAL_SIZE, TREE_SIZE, RAW_FLAG, VERSION, SCAN_COUNT = 454, 458, 596, 604, 616

# Name of each field: offset and form. A form that ends in "s" is a text.
FIELDS = {
    "operatorName": (24, "30s"),
    "runVoltage": (54, "<f"),
    "runTime": (58, "<f"),
    "injectionTime": (62, "<f"),
    "injectionVoltage": (66, "<f"),
    "temperature": (70, "<f"),
    "laserIndex": (74, "<i"),
    "pmtVoltage1": (78, "<f"),
    "pmtVoltage2": (82, "<f"),
    "instrumentId": (398, "22s"),
    "plateColumns": (496, "<i"),
    "plateRows": (500, "<i"),
    "runId": (568, "6s"),
    "rawFlag": (RAW_FLAG, "<i"),
    "saturatedFlag": (600, "<i"),
    "version": (VERSION, "<f"),
    "runStart": (608, "<i"),
    "runStop": (612, "<i"),
    "scanCount": (SCAN_COUNT, "<I"),
    "scanRate": (620, "<i"),
    "capillaries": (625, "<B"),
}


def unsigned(trailer: bytes, offset: int) -> int:
    """The 32-bit number at `offset`."""
    return int(struct.unpack_from("<I", trailer, offset)[0])


def parse(trailer: bytes) -> dict[str, Any]:
    """The trailer's fields by name. ValueError for a version that no sample file has."""
    fields: dict[str, Any] = {}
    for name, (offset, form) in FIELDS.items():
        value = struct.unpack_from(form, trailer, offset)[0]
        fields[name] = decode_text(value) if form.endswith("s") else value
    if not 1.1 <= fields["version"] <= 1000.0:
        raise ValueError(f"it is no sample file (version {fields['version']:g})")
    fields["channelBase"] = "".join(decode_text(trailer[358 + 10 * i : 368 + 10 * i]) for i in range(4))
    for name, fallback in (("plateColumns", 12), ("plateRows", 8)):
        if fields[name] < 1:
            fields[name] = fallback
    return fields
