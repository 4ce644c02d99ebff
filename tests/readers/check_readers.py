#!/usr/bin/python3
"""Has public readers read the SCF and ABD files of an output tree and compares what they see with the stored samples.

usage: check_readers.py FOLDER...

Every processed sample (.esd) and every failed one (.fsd) below the folders is looked up with its SCF and ABD file,
beside it or in "SCF" and "ABD"; the run must have exported whole traces (not -GOOD_SEQ). The readers are io_lib
(scf_dump, extract_seq, convert_trace), Biopython and EMBOSS (seqret, abiview). A reader that prints a warning fails.
Runs in the time zone of the run that wrote the files. Exit code 0 when all agree.
"""

import math
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import time
import warnings

from Bio import SeqIO

warnings.simplefilter("error")


def flatten(tree, position, pairs, prefix, out):
    """Values of one level of a property tree by dotted key; gives the position behind it."""
    while pairs != 0 and tree[position] != 0xFC:
        _, key, position = item(tree, position)
        kind, value, position = item(tree, position)
        name = prefix + key[:-1].decode("latin-1").upper()
        if kind == 0:
            position = flatten(tree, position, value // 2, name + ".", out)
        elif kind in (36, 42, 44):
            code, size = {36: ("f", 4), 42: ("h", 2), 44: ("i", 4)}[kind]
            out[name] = struct.unpack("<%d%s" % (len(value) // size, code), value)
        else:
            out[name] = value[:-1].decode("latin-1") if kind == 1 else value
        pairs -= 1
    return position


def item(tree, position):
    tag = tree[position]
    start = position + 1 + (tag & 3)
    size = int.from_bytes(tree[position + 1 : start], "little")
    if tag >> 2 == 0:
        return 0, size, start
    return tag >> 2, tree[start : start + size], start + size


class Stored:
    """A sample file as the program stored it."""

    def __init__(self, path):
        data = pathlib.Path(path).read_bytes()
        trailer = data[-632:]
        total, tree_size = struct.unpack_from("<II", trailer, 454)
        tree = {}
        if total:
            flatten(data[len(data) - total :][:tree_size], 0, -1, "", tree)
        self.failed = bool(tree.get("BASECALL ERROR")) or path.endswith(".fsd")
        self.name = tree.get("SAMPLE NAME") or tree.get("WELL ID", "")
        self.start, self.stop = (max(t, 0) for t in struct.unpack_from("<ii", trailer, 608))
        self.comment = tree.get("COMMENT", "")
        if self.failed:
            return
        scans = (len(data) - (total or 632)) // 20
        records = [struct.unpack_from("<4f", data, 20 * i + 4) for i in range(scans)]
        self.curves = dict(zip(self.base_order(tree, trailer), zip(*records)))
        self.first = tree.get("START TRACE PROCESSING", (0,))[0]
        marks = tree.get("BASES DESCRIPTORS", ())
        shown = [i for i in range(tree["BASES CALLED"][0]) if marks[2 * i : 2 * i + 2] != (2, 0)]
        self.letters = "".join(tree["SEQUENCE"][i] for i in shown)
        self.peaks = [tree["PEAK POSITIONS"][i] - self.first for i in shown]
        self.qualities = [int(tree["QUALITY SCORES"][i]) for i in shown]

    @staticmethod
    def base_order(tree, trailer):
        names = [tree.get("CHEMISTRY.CHANNEL%d.BASE" % n, "")[:1] for n in (1, 2, 3, 4)]
        fields = [chr(trailer[358 + 10 * n]).upper() for n in range(4)]
        return names if struct.unpack_from("<f", trailer, 604)[0] >= 1.2 and all(names) else fields

    def scf_curve(self, letter):
        low, high = self.bounds(len(self.curves["A"]))
        scale = (high - low) / 2000.0
        return [int((v - low) / scale) if scale else 0 for v in self.curves[letter]]

    def abd_curve(self, letter, step):
        low, high = self.bounds(len(self.curves["A"]) - 1, step)
        divisor = 1.0 if 1000.0 <= high - low <= 2000.0 else (high - low) * 0.0005
        count = len(self.curves["A"]) // step
        return [int((v - low) / divisor) if divisor else 0 for v in self.curves[letter][::step][:count]]

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


def scf_dump(path):
    """Sections of scf_dump's print: (letter, peak) pairs, curves, comments."""
    sections = re.split(r"^\[(\w+)\]\n", run("scf_dump", path).decode("latin-1"), flags=re.M)
    parts = dict(zip(sections[1::2], sections[2::2]))
    bases = [line.split()[:2] for line in parts["Bases"].splitlines() if line]
    curves = {x: [int(v.split()[0]) for v in parts[x + "_Trace"].splitlines() if v] for x in "ACGT"}
    comments = dict(line.split("=", 1) for line in parts["Comments"].splitlines() if "=" in line)
    return "".join(b[0] for b in bases), [int(b[1]) for b in bases], curves, comments


def check_scf(path, stored, work):
    letters, peaks, curves, comments = scf_dump(path)
    expect("scf_dump name", comments["NAME"], stored.name)
    expect("scf_dump remark", comments["SampleRemark"], stored.comment.split("\n")[0])
    expect("scf_dump date", time.mktime(time.strptime(comments["DATE"])), float(stored.start))
    expect("convert_trace output", bool(run("convert_trace", "-out_format", "scf", stdin=path)), True)
    extracted = "".join(run("extract_seq", "-scf", path).decode("latin-1").split())
    wanted = "" if stored.failed else stored.letters
    expect("scf_dump letters", letters, wanted)
    expect("extract_seq letters", extracted, wanted)
    expect("scf_dump curves", curves, {x: [] if stored.failed else stored.scf_curve(x) for x in "ACGT"})
    if wanted:
        expect("scf_dump peaks", peaks, [max(p, 0) for p in stored.peaks])
        expect("seqret letters", seqret(path, "scf", work), wanted.upper())


def seqret(path, kind, work):
    out = os.path.join(work, "seqret.fasta")
    run("seqret", "-auto", "-sformat", kind, "-sequence", path, "-osformat", "fasta", "-outseq", out)
    return str(SeqIO.read(out, "fasta").seq).upper()


def check_abd(path, stored, work):
    record = SeqIO.read(path, "abi")
    raw = record.annotations["abif_raw"]
    local = lambda seconds: time.strftime("%Y-%m-%d %H:%M:%S", time.localtime(seconds))
    expect("Biopython name", record.id, stored.name)
    expect("Biopython start", record.annotations["run_start"], local(stored.start))
    expect("Biopython stop", record.annotations["run_finish"], local(stored.stop))
    expect("Biopython comment", raw["CMNT1"].decode("latin-1"), stored.comment)
    scf = os.path.join(work, "converted.scf")
    lanes = ("-abi_data", "1,2,3,4") if stored.failed else ()
    with open(scf, "wb") as out:
        out.write(run("convert_trace", *lanes, "-out_format", "scf", stdin=path))
    letters, peaks, curves, comments = scf_dump(scf)
    expect("convert_trace name", comments["NAME"], stored.name)
    compact = lambda seconds: time.strftime("%Y%m%d.%H%M%S", time.localtime(seconds))
    expect("convert_trace dates", comments["RUND"], compact(stored.start) + " - " + compact(stored.stop))
    if stored.failed:
        expect("Biopython letters", str(record.seq), "")
        expect("convert_trace curves", tuple(curves["C"]), raw["DATA1"])
        return
    # The longer of the raw and the processed trace decides how many scans are left out.
    step = next(n for n in range(1, 1000) if len(stored.curves["A"]) // n <= len(raw["DATA9"]))
    wanted = {x: stored.abd_curve(x, step) for x in "CAGT"}
    peaks_wanted = [int(p / step) for p in stored.peaks]
    for number, letter in enumerate("CAGT", 9):
        expect("Biopython DATA%d" % number, list(raw["DATA%d" % number]), wanted[letter])
    expect("convert_trace curves", curves, {x: [max(v, 0) for v in wanted[x]] for x in "ACGT"})
    expect("Biopython letters", str(record.seq), stored.letters)
    expect("Biopython peaks", list(raw["PLOC2"]), peaks_wanted)
    phred = lambda p: 40 if p >= 100 else math.floor(min(40.0, -10 * math.log10(1 - p / 100)) + 0.5)
    expect("Biopython qualities", record.letter_annotations.get("phred_quality", []),
           [phred(p) for p in stored.qualities])
    expect("convert_trace peaks", peaks, peaks_wanted)
    # io_lib shows the N of this format as a dash.
    dashed = stored.letters.replace("N", "-")
    expect("convert_trace letters", letters, dashed)
    expect("extract_seq letters", "".join(run("extract_seq", "-abi", path).decode("latin-1").split()), dashed)
    if stored.letters:
        expect("seqret letters", seqret(path, "abi", work), stored.letters.upper())
        viewed = os.path.join(work, "abiview.fasta")
        run("abiview", "-auto", "-graph", "data", "-goutfile", os.path.join(work, "view"), "-infile", path,
            "-outseq", viewed)
        expect("abiview letters", str(SeqIO.read(viewed, "fasta").seq).upper(), stored.letters.upper())


def exported(sample, kind):
    folder, name = os.path.split(sample)
    leaf = name[:-4] + "." + kind
    places = [os.path.join(folder, kind.upper(), leaf), os.path.join(folder, leaf)]
    return next((place for place in places if os.path.exists(place)), places[0])


def main(roots):
    samples = [os.path.join(folder, name) for root in roots for folder, _, names in os.walk(root)
               for name in sorted(names) if name.endswith((".esd", ".fsd"))]
    failures = 0
    with tempfile.TemporaryDirectory() as work:
        for sample in samples:
            stored = Stored(sample)
            for kind, check in (("scf", check_scf), ("abd", check_abd)):
                try:
                    check(exported(sample, kind), stored, work)
                except Exception as error:
                    failures += 1
                    print("%s: %s: %s" % (exported(sample, kind), type(error).__name__, error))
    print("%d samples, %d files that a reader did not read as stored" % (len(samples), failures))
    return 0 if samples and failures == 0 else 1


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1:]))
