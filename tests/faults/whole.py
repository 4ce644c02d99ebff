# SPDX-License-Identifier: MIT
"""Whether a file that the program writes is whole, kind by kind: small readers that raise Torn where something is missing."""

import array
import functools
import operator
import struct

SAMPLE_TRAILER = 632
TAGS = ["log", "files", "esd", "/esd", "abd", "/abd", "scf", "/scf", "fasta", "/fasta", "txt", "/txt", "/files", "/log"]


class Torn(Exception):
    """The file is not what its kind promises."""


def demand(condition, text):
    if not condition:
        raise Torn(text)


def demand_checksum(data):
    """Of a sample, raw or processed."""
    demand(len(data) >= SAMPLE_TRAILER and len(data) % 4 == 0, "no trailer")
    demand(functools.reduce(operator.xor, array.array("I", data), 0) == 0, "the checksum is wrong")


def sample(data):
    """Number of scans of a processed sample or a placeholder."""
    demand_checksum(data)
    trailer = data[-SAMPLE_TRAILER:]
    total, tree_size = struct.unpack_from("<II", trailer, 454)
    (raw,) = struct.unpack_from("<I", trailer, 596)
    (scans,) = struct.unpack_from("<I", trailer, 616)
    demand(raw == 0, "marked as raw")
    demand(total == tree_size + SAMPLE_TRAILER and scans * 20 + total == len(data), "the sizes do not add up")
    tree, position = data[-total : len(data) - SAMPLE_TRAILER], 0
    while tree[position] != 0xFC:
        length = tree[position] & 3
        value = int.from_bytes(tree[position + 1 : position + 1 + length], "little")
        position += 1 + length + (value if tree[position] >> 2 else 0)
        demand(position < len(tree), "the tree has no end")
    return scans


def abif(data):
    """Number of bases of an ABD file."""
    demand(data[:4] == b"ABIF" and len(data) >= 128, "no header")
    count, size, directory = struct.unpack_from(">III", data, 18)
    demand(directory + 28 * count <= len(data), "the directory is cut")
    bases = 0
    for entry in range(directory, directory + 28 * count, 28):
        name, number, _, _, elements, size, offset = struct.unpack_from(">4sIHHIII", data, entry)
        demand(size <= 4 or offset + size <= len(data), "a tag is cut")
        if name == b"PBAS" and number == 1:
            bases = elements
    return bases


def scf(data):
    """Number of bases of an SCF file."""
    demand(data[:4] == b".scf" and len(data) >= 128, "no header")
    _, _, bases, _, _, bases_at, comment_size, comments_at = struct.unpack_from(">8I", data, 4)
    demand(bases_at + 12 * bases == comments_at and comments_at + comment_size == len(data), "the sizes do not add up")
    return bases


def fasta(data):
    """The records of a FASTA file, each with its header."""
    demand(not data or (data[:1] == b">" and data.endswith(b"\r\n")), "a record is cut")
    records = [b">" + record for record in data.split(b">")[1:]]
    for record in records:
        lines = record.split(b"\r\n")
        fields = lines[0].split(b"\t")
        demand(len(fields) == 3 and fields[1].isdigit() and fields[2] == b"Quillion", "a header is cut")
        demand(len(b"".join(lines[1:])) == int(fields[1]) and lines[-1] == b"", "letters are missing")
    return records


def table(data):
    """The numbers of a text dump; the lines before them describe what has become of the sample."""
    head, heading, numbers = data.partition(b"\t Current\r\n\r\n")
    demand(heading, "there is no heading")
    demand(not numbers or numbers.endswith(b"\r\n"), "the end is missing")
    return numbers


def held(name, data):
    """What a file of one sample holds, by its extension; nothing in a failed form. Raises Torn unless it is whole."""
    readers = {"esd": sample, "fsd": lambda stored: sample(stored) - 1, "abd": abif, "scf": scf, "seq": fasta, "txt": table}
    return readers[name[-3:]](data)


def markup_log(data):
    """The entries of log.xml as (section, path) in their order."""
    demand(not data or data.endswith(b"</log>\t\t\r\n"), "the end is missing")
    entries, section, tags = [], None, []
    for line in data.split(b"\r\n")[:-1]:
        field = line.rstrip(b"\t")
        if field[:1] == b"<" and field[-1:] == b">":
            section = field[1:-1].decode()
            tags.append(section)
        elif field:
            demand(line.endswith(b"\t\t"), "an entry is cut")
            entries.append((section, field.decode()))
    demand(not data or tags == TAGS, "tags are missing")
    return entries
