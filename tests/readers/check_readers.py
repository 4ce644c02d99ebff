#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Has public readers read the SCF and ABD files that the program writes, and compares what they see with its samples.

usage: check_readers.py PROGRAM PLATE OUTPUT

The samples of PLATE are copied into OUTPUT (its folders "plate" and "calls" are made anew) and joined by one too short to be
called and one too long to be exported scan by scan; one of the stored results gets qualities of every height, one loses its
bases. The program exports all of them from what it stored. The readers are io_lib (scf_dump, extract_seq, convert_trace),
Biopython and EMBOSS (seqret, abiview). One that is missing, or prints a warning, fails the check. Exit code 0 when all agree.
"""

import math
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import time
import warnings

from Bio import SeqIO

warnings.simplefilter("error")
TRAILER = 632
LONGEST_SERIES = 32767


def item(tree, position):
    """Type, value and end of one item of a property tree; the value of a subtree is its number of items."""
    tag = tree[position]
    start = position + 1 + (tag & 3)
    size = int.from_bytes(tree[position + 1 : start], "little")
    return (tag >> 2, tree[start : start + size], start + size) if tag >> 2 else (0, size, start)


def flatten(tree, position, pairs, prefix, out):
    """Values of one level of a property tree by dotted key; gives the position after it."""
    while pairs != 0 and tree[position] != 0xFC:
        _, key, position = item(tree, position)
        kind, value, position = item(tree, position)
        name = prefix + key[:-1].decode("latin-1").upper()
        if kind == 0:
            position = flatten(tree, position, value // 2, name + ".", out)
        elif kind in (36, 42, 44):
            out[name] = [number for number, in struct.iter_unpack({36: "<f", 42: "<h", 44: "<i"}[kind], value)]
        else:
            out[name] = value[:-1].decode("latin-1")
        pairs -= 1
    return position


class Stored:
    """A raw or processed sample file."""

    def __init__(self, path):
        data = path.read_bytes()
        trailer = data[-TRAILER:]
        total, tree_size = struct.unpack_from("<II", trailer, 454)
        tree = {}
        if total:
            flatten(data[len(data) - total :][:tree_size], 0, -1, "", tree)
        raw = struct.unpack_from("<i", trailer, 596)[0] == 1
        self.name = tree.get("SAMPLE NAME") or tree.get("WELL ID", "")
        self.comment = tree.get("COMMENT", "")
        self.start, self.stop = (max(t, 0) for t in struct.unpack_from("<ii", trailer, 608))
        self.scans = (len(data) - (total or TRAILER)) // 20
        records = [struct.unpack_from("<I4I" if raw else "<I4f", data, 20 * i) for i in range(self.scans)]
        channels = list(zip(*records))[1:]
        names = [tree.get("CHEMISTRY.CHANNEL%d.BASE" % (n + 1), "") or chr(trailer[358 + 10 * n]) for n in range(4)]
        self.curves = dict(zip((name[0].upper() for name in names), channels))
        shown, first = [], 0
        if not raw:
            marks, first = tree["BASES DESCRIPTORS"], tree["START TRACE PROCESSING"][0]
            shown = [i for i in range(tree["BASES CALLED"][0]) if marks[2 * i] != 2 or marks[2 * i + 1] != 0]
        self.letters = "".join(tree["SEQUENCE"][i] for i in shown)
        self.peaks = [tree["PEAK POSITIONS"][i] - first for i in shown]
        self.qualities = [tree["QUALITY SCORES"][i] for i in shown]

    def scf_curves(self):
        low, high = self.bounds(self.scans)
        return self.scaled(low, (high - low) / 2000.0)

    def abd_curves(self, end, step):
        low, high = self.bounds(end - 1, step)
        return self.scaled(low, 1.0 if 1000.0 <= high - low <= 2000.0 else (high - low) * 0.0005, end, step)

    def scaled(self, low, scale, end=None, step=1):
        count = end // step if end else None
        return {x: [int((v - low) / scale) if scale else 0 for v in self.curves[x][::step][:count]] for x in "ACGT"}

    def bounds(self, end, step=1):
        values = [v for curve in self.curves.values() for v in curve[:end:step]]
        return min(values + [1000.0]), max(values + [0.0])


def run(*command, stdin=None):
    data = pathlib.Path(stdin).read_bytes() if stdin else None
    result = subprocess.run(command, input=data, capture_output=True)
    if result.returncode != 0 or result.stderr:
        raise AssertionError("%s: code %d, %s" % (command[0], result.returncode, result.stderr.decode().strip()))
    return result.stdout


def expect(what, got, wanted):
    if got != wanted:
        raise AssertionError("%s: %.80r, stored %.80r" % (what, got, wanted))


def local(seconds, form):
    return time.strftime(form, time.localtime(seconds))


def scf_dump(path):
    """Letters, peaks, curves and comments in scf_dump's print."""
    sections = re.split(r"^\[(\w+)\]\n", run("scf_dump", path).decode("latin-1"), flags=re.M)
    parts = dict(zip(sections[1::2], sections[2::2]))
    bases = [line.split()[:2] for line in parts["Bases"].splitlines() if line]
    curves = {x: [int(v.split()[0]) for v in parts[x + "_Trace"].splitlines() if v] for x in "ACGT"}
    comments = dict(line.split("=", 1) for line in parts["Comments"].splitlines() if "=" in line)
    return "".join(b[0] for b in bases), [int(b[1]) for b in bases], curves, comments


def converted(path, work, *options):
    """What convert_trace makes of a file, in scf_dump's print."""
    target = work / "converted.scf"
    target.write_bytes(run("convert_trace", *options, "-out_format", "scf", stdin=path))
    return scf_dump(target)


def extracted(path, kind):
    return "".join(run("extract_seq", "-" + kind, path).decode("latin-1").split())


def emboss(form, work, *command):
    """The one record that an EMBOSS program writes."""
    target = work / "emboss.out"
    run(*command, "-auto", "-outseq", target)
    record = SeqIO.read(target, form)
    return record, str(record.seq).upper()


def check_scf(path, raw, called, work):
    curves = called.scf_curves() if called else {x: [] for x in "ACGT"}
    sample = called or raw
    for reader, seen in (("scf_dump", scf_dump(path)), ("convert_trace", converted(path, work))):
        expect(reader + " letters", seen[0], sample.letters)
        expect(reader + " peaks", seen[1], [max(p, 0) for p in sample.peaks])
        expect(reader + " curves", seen[2], curves)
        expect(reader + " name", seen[3]["NAME"], sample.name)
        expect(reader + " remark", seen[3]["SampleRemark"], sample.comment.split("\n")[0])
        expect(reader + " date", seen[3]["DATE"], local(sample.start, "%a %b %e %H:%M:%S %Y"))
    expect("extract_seq letters", extracted(path, "scf"), sample.letters)
    if sample.letters:
        record, letters = emboss("fasta", work, "seqret", "-sequence", "scf::%s" % path)
        expect("seqret", ("NAME=%s;" % sample.name in record.description, letters), (True, sample.letters.upper()))


def check_abd(path, raw, called, work):
    sample = called or raw
    step = max(raw.scans, sample.scans) // LONGEST_SERIES + 1
    raw_curves = raw.abd_curves(raw.scans - 1, step)
    curves = called.abd_curves(called.scans, step) if called else raw_curves
    peaks = [int(p / step) for p in sample.peaks]
    phred = [93 if q >= 100 else math.floor(min(93.0, -10 * math.log10(1 - q / 100)) + 0.5) for q in sample.qualities]

    record = SeqIO.read(path, "abi")
    tags = record.annotations["abif_raw"]
    expect("Biopython name", record.id, sample.name)
    expect("Biopython start", record.annotations["run_start"], local(sample.start, "%Y-%m-%d %H:%M:%S"))
    expect("Biopython stop", record.annotations["run_finish"], local(sample.stop, "%Y-%m-%d %H:%M:%S"))
    expect("Biopython comment", tags["CMNT1"].decode("latin-1"), sample.comment)
    expect("Biopython letters", str(record.seq), sample.letters)
    expect("Biopython qualities", record.letter_annotations.get("phred_quality", []), phred)
    expect("Biopython percent", list(tags.get("QVAL1", ())), [int(q) for q in sample.qualities])
    expect("Biopython peaks", list(tags.get("PLOC2", ())), peaks)
    for number, letter in enumerate("CAGT"):
        expect("Biopython DATA%d" % (number + 1), list(tags["DATA%d" % (number + 1)]), raw_curves[letter])
        if called:
            expect("Biopython DATA%d" % (number + 9), list(tags["DATA%d" % (number + 9)]), curves[letter])

    # io_lib looks for processed curves unless an option names others, and shows the N of this format as a dash.
    dashed = sample.letters.replace("N", "-")
    seen = converted(path, work, *([] if called else ["-abi_data", "1,2,3,4"]))
    expect("convert_trace letters", seen[0], dashed)
    expect("convert_trace peaks", seen[1], peaks)
    expect("convert_trace curves", seen[2], {x: [max(v, 0) for v in curves[x]] for x in "ACGT"})
    expect("convert_trace name", seen[3]["NAME"], sample.name)
    expect("convert_trace dates", seen[3]["RUND"], " - ".join(local(t, "%Y%m%d.%H%M%S") for t in (sample.start, sample.stop)))
    if called:
        expect("extract_seq letters", extracted(path, "abi"), dashed)
    if sample.letters:
        record, letters = emboss("fastq", work, "seqret", "-sequence", "abi::%s" % path, "-osformat", "fastq-sanger")
        expect("seqret letters", letters, sample.letters.upper())
        if re.fullmatch(r"[\w ]*\w\w", sample.name):  # what EMBOSS makes of other names is its own affair
            expect("seqret name", record.id, sample.name.split()[-1])
        expect("seqret qualities", record.letter_annotations["phred_quality"], phred)
        view = emboss("fasta", work, "abiview", "-infile", path, "-graph", "data", "-goutfile", work / "view")
        expect("abiview letters", view[1], sample.letters.upper())


def write_variant(source, name, change):
    """A sample with other scans: `change` gets those of `source`."""
    data = source.read_bytes()
    scans = struct.unpack_from("<I", data, len(data) - TRAILER + 616)[0]
    records, rest = change(data[: 20 * scans]), bytearray(data[20 * scans :])
    struct.pack_into("<I", rest, len(rest) - TRAILER + 616, len(records) // 20)
    source.with_name(name + source.suffix).write_bytes(records + rest)


def remove_bases(path):
    data = bytearray(path.read_bytes())
    number = data.index(b"BASES CALLED\0") + len(b"BASES CALLED\0") + 2
    data[number : number + 2] = bytes(2)
    path.write_bytes(data)


def vary_qualities(path):
    """Gives the bases of a stored sample qualities from 0 to 99.9, on both sides of what rounding makes of them."""
    data = bytearray(path.read_bytes())
    key = data.index(b"QUALITY SCORES\0") + len(b"QUALITY SCORES\0")
    _, scores, end = item(data, key)
    percent = [100 - 100 * 10 ** (-(37 * i % 1000) / 100) for i in range(len(scores) // 4)]
    struct.pack_into("<%df" % len(percent), data, end - len(scores), *percent)
    path.write_bytes(data)


def export(program, plate_folder, output):
    """Has the program call and export all samples; gives the paths of each raw sample and its result."""
    plate, calls = output / "plate", output / "calls"
    for folder in (plate, calls):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
    for path in sorted(pathlib.Path(plate_folder).glob("*.[re]sd")):
        shutil.copy(path, plate)
    samples = sorted(plate.iterdir())
    write_variant(samples[0], "short", lambda records: records[: 20 * 100])
    write_variant(samples[0], "long", lambda records: records * (20 * LONGEST_SERIES // len(records) + 1))
    run(program, "-IP", plate, "-OD", calls, "-BC")
    folder = next(calls.iterdir())
    vary_qualities(folder / (samples[-2].stem + ".esd"))
    remove_bases(folder / (samples[-1].stem + ".esd"))
    run(program, "-IP", plate, "-OD", calls, "-BC", "-ABD", "-SCF")
    return [(path, folder / (path.stem + ".esd")) for path in sorted(plate.glob("*.[re]sd"))]


def main(program, plate, output):
    os.environ["TZ"] = "CET-1CEST,M3.5.0,M10.5.0/3"
    time.tzset()
    failed = wrong = 0
    for raw_path, called_path in export(program, plate, output):
        raw = Stored(raw_path)
        called = Stored(called_path) if called_path.exists() else None
        failed += called is None
        for kind, check in (("scf", check_scf), ("abd", check_abd)):
            path = called_path.parent / kind.upper() / (called_path.stem + "." + kind)
            try:
                check(path, raw, called, output)
            except Exception as error:
                wrong += 1
                print("%s: %s: %s" % (path, type(error).__name__, error))
    print("%d failed samples; %d files were not read as stored" % (failed, wrong))
    return 0 if failed and not wrong else 1


if __name__ == "__main__":
    sys.exit(main(*map(pathlib.Path, sys.argv[1:])) if len(sys.argv) == 4 else __doc__)
