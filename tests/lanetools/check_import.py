#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Real ABIF files, imported by lanetools and read by Biopython: the same channels and names, and a plate that the
program calls.

    check_import.py LANETOOLS LANEWRIGHT [FOLDER]

The files are those that Debian's packages have, or those of FOLDER.
"""

import gzip
import pathlib
import struct
import subprocess
import sys
import tempfile

from Bio import SeqIO

PACKAGED = [
    "/usr/share/doc/python-biopython-doc/Tests/Abi/310.ab1.gz",
    "/usr/share/doc/python-biopython-doc/Tests/Abi/3100.ab1.gz",
    "/usr/share/doc/python-biopython-doc/Tests/Abi/3730.ab1.gz",
    "/usr/share/doc/python-biopython-doc/Tests/Abi/A6_1-DB3.ab1.gz",
    "/usr/share/doc/python-biopython-doc/Tests/Abi/no_smpl1.ab1.gz",
    "/usr/share/doc/python-biopython-doc/Tests/Abi/nonascii_encoding.ab1.gz",
    "/usr/share/EMBOSS/test/data/abiview.abi",
]
TRAILER = 632


def gather(folder, into):
    """Copies the files, unpacked; gives how many there are."""
    sources = sorted(pathlib.Path(folder).glob("*.ab[1i]")) if folder else map(pathlib.Path, PACKAGED)
    count = 0
    for source in sources:
        data = source.read_bytes()
        packed = source.suffix == ".gz"
        (into / (source.stem if packed else source.name)).write_bytes(gzip.decompress(data) if packed else data)
        count += 1
    return count


def plain_directory(path):
    """The tags of a file that Biopython refuses for one of its other tags."""
    data = path.read_bytes()
    count, _, offset = struct.unpack_from(">3I", data, 18)
    raw = {}
    for at in range(offset, offset + 28 * count, 28):
        name, number, kind, _, elements, size, where = struct.unpack_from(">4si2h3I", data, at)
        start = at + 20 if size <= 4 else where
        if name == b"DATA":
            raw["DATA%d" % number] = struct.unpack_from(">%dh" % elements, data, start)
        elif kind == 18:
            raw[name.decode() + str(number)] = data[start + 1:start + size]
    return raw


def expected(path):
    """The tags, and current and channels as five columns, by way of Biopython."""
    try:
        with open(path, "rb") as file:
            raw = SeqIO.read(file, "abi").annotations["abif_raw"]
    except AssertionError:
        raw = plain_directory(path)
    channels = [raw["DATA%d" % i] for i in (1, 2, 3, 4)]
    count = min(map(len, channels))
    lifted = []
    for channel in channels:
        lift = max(0, -min(channel[:count]))
        lifted.append([value + lift for value in channel[:count]])
    current = raw.get("DATA6") or [100]
    return raw, [[max(0, current[i * len(current) // count]) for i in range(count)]] + lifted


def stored(path):
    """The same of a raw sample, and whether its words add up to a good checksum."""
    data = path.read_bytes()
    total, = struct.unpack_from("<I", data, len(data) - TRAILER + 454)
    words = struct.unpack("<%dI" % (len(data) // 4), data)
    checksum = 0
    for word in words:
        checksum ^= word
    scans = words[:(len(data) - total) // 4]
    return [list(scans[k::5]) for k in range(5)], checksum == 0, data


def main():
    lanetools, lanewright = sys.argv[1:3]
    with tempfile.TemporaryDirectory() as temporary:
        work = pathlib.Path(temporary)
        (work / "in").mkdir()
        count = gather(sys.argv[3] if len(sys.argv) > 3 else None, work / "in")
        run = subprocess.run([lanetools, "import", "in", "-o", "plates", "--plate", "all", "--name", "file"], cwd=work,
                             capture_output=True, text=True, check=True)
        lines = [line.split("\t") for line in run.stdout.splitlines()]
        assert len(lines) == count > 0, run.stdout
        for source, target, remark in lines:
            raw, columns = expected(work / source)
            got, is_good, data = stored(work / target)
            assert got == columns, source + ": other channels"
            assert is_good, source + ": the checksum is wrong"
            for tag in ("SMPL1", "MCHN1", "CMNT1"):
                assert raw.get(tag, b"").strip() in data, source + ": lacks " + tag
            assert remark == "", remark
        subprocess.run([lanewright, "-IP", "plates/all", "-OD", "out", "-BC"], cwd=work, check=True,
                       stdout=subprocess.DEVNULL)
        called = list(work.glob("out/*/*.esd"))
        print("%d files imported as Biopython reads them, %d called" % (count, len(called)))
        assert len(called) * 2 > count


if __name__ == "__main__":
    main()
