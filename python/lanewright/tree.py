# SPDX-License-Identifier: MIT
"""The property tree of a sample file: typed values under dotted keys, in one stream of items.

An item is a tag byte (type code in bits 7 to 2, number L of length bytes in bits 1 and 0), L bytes of the payload's
length N, little-endian, and N bytes of payload. A pair is a text item (the key) and a value item. A subtree's N is twice
the number of its pairs, which follow its header. The top level ends at the end marker.
"""

from __future__ import annotations

from typing import Any, Iterator, Union

import numpy as np

Value = Union[str, bool, bytes, "np.ndarray[Any, Any]"]

SUBTREE, TEXT, WIDE_TEXT, BOOLEAN, END = 0, 1, 2, 8, 63
ARRAYS = {25: "<u1", 32: "<u8", 36: "<f4", 42: "<i2", 44: "<i4"}


def decode_text(data: bytes) -> str:
    """Text up to its NUL: UTF-8 where it is that, else Latin-1 (the character set is not recorded)."""
    data = data.split(b"\0", 1)[0]
    try:
        return data.decode("utf-8")
    except UnicodeDecodeError:
        return data.decode("latin-1")


def _decode(kind: int, payload: bytes) -> Value:
    if kind == TEXT:
        return decode_text(payload)
    if kind == WIDE_TEXT:
        return payload.decode("utf-16-le", "replace").split("\0", 1)[0]
    if kind == BOOLEAN:
        return payload[:1] == b"\1"
    if kind in ARRAYS:
        return np.frombuffer(payload, ARRAYS[kind])
    return payload


def _items(block: bytes) -> Iterator[tuple[int, int, bytes]]:
    """Type, N and payload of each item up to the end marker."""
    at = 0
    while at < len(block):
        kind, lengths = block[at] >> 2, block[at] & 3
        if kind == END and lengths == 0:
            return
        start = at + 1 + lengths
        count = int.from_bytes(block[at + 1 : start], "little")
        size = 0 if kind == SUBTREE else count
        if start + size > len(block):
            break
        if kind in ARRAYS and count % np.dtype(ARRAYS[kind]).itemsize != 0:
            raise ValueError("the property tree has an array with a broken value")
        yield kind, count, block[start : start + size]
        at = start + size
    raise ValueError("the property tree has no end")


def parse(block: bytes) -> dict[str, Value]:
    """All values by their dotted keys. ValueError for a stream that does not parse."""
    values: dict[str, Value] = {}
    levels: list[tuple[str, int]] = []  # prefix and pairs still to come of the subtrees around an item
    items = _items(block)
    for kind, _, payload in items:
        if kind != TEXT:
            raise ValueError("the property tree has a key that is no text")
        while levels and levels[-1][1] == 0:
            levels.pop()
        prefix = levels[-1][0] if levels else ""
        if levels:
            levels[-1] = (prefix, levels[-1][1] - 1)
        key = prefix + decode_text(payload)
        value = next(items, None)
        if value is None:
            raise ValueError(f"the property tree has no value for {key!r}")
        kind, count, payload = value
        if kind == SUBTREE:
            levels.append((key + ".", count // 2))
        else:
            values[key] = _decode(kind, payload)
    return values
