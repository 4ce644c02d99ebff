# SPDX-License-Identifier: MIT
"""A sample file as a whole: scan records, property tree, trailer, and one checksum over them."""

from __future__ import annotations

import os
from dataclasses import dataclass
from typing import Any, Union

import numpy as np

from lanewright import trailer, tree

SCAN = 20  # bytes of a scan record: the current and four channels, 32 bits each


@dataclass(frozen=True)
class Bases:
    """The called bases; empty for a raw or failed sample."""

    letters: str
    positions: np.ndarray[Any, np.dtype[np.int32]]  # raw scan numbers
    qualities: np.ndarray[Any, np.dtype[np.float32]]  # percent; Phred is -10 log10((100 - q) / 100)

    def __len__(self) -> int:
        return len(self.letters)


@dataclass(frozen=True)
class Sample:
    """One sample file."""

    raw: bool  # as the instrument recorded it; False for what base calling left
    current: np.ndarray[Any, np.dtype[np.uint32]]  # one value per scan
    # 4 x scans, in the instrument's order of channels (info["channelBase"] has their letters): unsigned whole numbers of
    # a raw sample, floats of a processed one. Column 0 of a processed sample is raw scan info["START TRACE PROCESSING"].
    channels: np.ndarray[Any, Any]
    bases: Bases
    # Every key of the property tree by its dotted name ("CHEMISTRY.CHANNEL1.DYE"), texts as str, numbers as int or
    # float, arrays as numpy arrays; and the trailer's fields by theirs ("runStart", "scanRate").
    info: dict[str, Any]

    @property
    def error(self) -> str:
        """Why base calling failed; empty when it did not."""
        return str(self.info.get("BASECALL ERROR", ""))


# Keys that hold a single number; all other arrays of numbers stay arrays.
SINGLE = {"BASES CALLED", "QUALITY INDEX", "NUMBER OF CURRENT FIX AREAS", "SPECTRAL SEPARATION OVERALL QUALITY",
          "SPECTRAL SEPARATION DEPTH", "S/N.ZONES MEASURED", "SPACING.BASES MEASURED",
          "CHEMISTRY.LASER MODE"} | {f"{end} {what}" for end in ("START", "END") for what in (
              "GOOD SEQUENCE", "SEQUENCE", "TRACE PROCESSING", "SIGNAL", "RAW DATA")}


def _single(key: str, value: Any) -> Any:
    return value[0].item() if key in SINGLE and isinstance(value, np.ndarray) and value.size > 0 else value


def _blocks(data: bytes) -> tuple[bytes, bytes, bytes]:
    """Scan block, tree block and trailer."""
    if len(data) < trailer.SIZE:
        raise ValueError(f"it is no sample file ({len(data)} bytes)")
    end = data[-trailer.SIZE :]
    total, size = trailer.unsigned(end, trailer.TOTAL_SIZE), trailer.unsigned(end, trailer.TREE_SIZE)
    if total == 0 and size == 0:
        return data[: -trailer.SIZE], b"", end
    start = len(data) - total
    if start < 0 or total < size + trailer.SIZE:
        raise ValueError(f"the property tree does not lie inside the file ({total} of {len(data)} bytes)")
    return data[:start], data[start : start + size], end


def _check_sum(data: bytes) -> None:
    """The exclusive-or of all 32-bit words of a good file is 0."""
    words = np.frombuffer(data, "<u4", count=len(data) // 4)
    if len(data) % 4 != 0 or np.bitwise_xor.reduce(words) != 0:
        raise ValueError("the checksum is wrong")


def _value(info: dict[str, Any], key: str, kind: type, missing: Any) -> Any:
    """The value of a key, which must be of this type."""
    value = info.get(key, missing)
    if not isinstance(value, kind) or isinstance(value, bool):
        raise ValueError(f"the value of {key} has another type")
    return value


def _bases(info: dict[str, Any]) -> Bases:
    count = max(_value(info, "BASES CALLED", int, 0), 0)
    if info["rawFlag"] == 1 or info.get("BASECALL ERROR"):
        count = 0
    letters = _value(info, "SEQUENCE", str, "")
    positions = _value(info, "PEAK POSITIONS", np.ndarray, np.empty(0)).astype(np.int32)
    qualities = _value(info, "QUALITY SCORES", np.ndarray, np.empty(0)).astype(np.float32)
    for name, values in (("letters", letters), ("positions", positions), ("qualities", qualities)):
        if len(values) < count:
            raise ValueError(f"it has {len(values)} {name} for {count} bases")
    return Bases(letters[:count], positions[:count], qualities[:count])


def parse(data: bytes, checksum: bool = True) -> Sample:
    """The sample that the bytes of a file hold; as `read`."""
    scan_block, tree_block, end = _blocks(data)
    info: dict[str, Any] = trailer.parse(end)
    count, size = info["scanCount"], len(scan_block) // SCAN
    if count != size:
        raise ValueError(f"it has {size} scans and says {count}")
    if checksum:
        _check_sum(data)
    if tree_block:
        info.update({key: _single(key, value) for key, value in tree.parse(tree_block).items()})
    raw = info["rawFlag"] == 1
    words = np.frombuffer(scan_block, "<u4", count=5 * count).reshape(count, 5)
    channels = np.ascontiguousarray(words[:, 1:].T)
    return Sample(raw, words[:, 0].copy(), channels if raw else channels.view("<f4"), _bases(info), info)


def read(path: Union[str, "os.PathLike[str]"], checksum: bool = True) -> Sample:
    """Reads the sample file at `path`.

    ValueError, with the path and a reason, for a file that is damaged or no sample; OSError for one that cannot be
    opened. Some instruments do not keep the checksum of raw samples: `checksum=False` leaves it out.
    """
    with open(path, "rb") as file:
        data = file.read()
    try:
        return parse(data, checksum)
    except ValueError as error:
        raise ValueError(f"{os.fspath(path)}: {error}") from None
