#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Reads the files of lanetools export with public readers, and compares them with the stored samples.

usage: check_exports.py LANEWRIGHT SAMPLEGEN LANETOOLS OUTPUT

Two synthetic plates with a failed well are called in the folder OUTPUT, which is created again; the stored qualities are spread over
every height. The readers are Biopython, seqtk, samtools and EMBOSS. One that is missing fails the check. Exit code 0 when
all agree.
"""

import gzip
import io
import math
import pathlib
import shutil
import struct
import subprocess
import sys

from Bio import SeqIO
from Bio.SeqIO.QualityIO import PairedFastaQualIterator

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "readers"))
from check_readers import Stored, expect, run, vary_qualities

CHECKSUM = 4


def seal(path):
    """Makes the checksum of a changed sample good again: all of its words together are 0."""
    data = bytearray(path.read_bytes())
    words = 0
    for at in range(0, len(data) - CHECKSUM - 3, 4):
        words ^= struct.unpack_from("<I", data, at)[0]
    struct.pack_into("<I", data, len(data) - CHECKSUM, words)
    path.write_bytes(data)


def call_plates(lanewright, samplegen, output):
    """The stored samples by title, in the order in which they are exported."""
    for number in ("1", "2"):
        run(samplegen, output / ("p" + number), "-p", "p" + number, "--wells", "3", "--failed", "1", "--bases", "200",
            "--seed", number)
        run(lanewright, "-IP", output / ("p" + number), "-OD", output / "out", "-BC", "-SCF")
    paths = sorted((output / "out").glob("*/*.esd"))
    for path in paths:
        vary_qualities(path)
        seal(path)
    return {path.stem: Stored(path) for path in paths}


def phred(percent):
    return 93 if percent >= 100 else math.floor(min(93.0, -10 * math.log10(1 - percent / 100)) + 0.5)


def mott(sample, limit):
    """The trimmed letters and Phred values: the best of all stretches, added up from scratch."""
    gains = [limit * 100 - (100 - q) for q in sample.qualities]
    best, kept = 0, (0, 0)
    for start in range(len(gains)):
        total = 0
        for end in range(start, len(gains)):
            total += gains[end]
            if total > best:
                best, kept = total, (start, end + 1)
    return sample.letters[slice(*kept)], [phred(q) for q in sample.qualities[slice(*kept)]]


class Exporter:
    def __init__(self, program, output):
        self.program, self.output = program, output

    def __call__(self, *switches):
        """The only file that a run for all plates writes."""
        folder = self.output / "reads"
        shutil.rmtree(folder, ignore_errors=True)
        command = [self.program, "export", self.output / "out", "-o", folder, "--per", "run", *switches]
        result = subprocess.run(command, capture_output=True)
        expect("exit code", result.returncode, 3)  # the failed wells
        return next(folder.iterdir())


def quiet(*command):
    """The standard output of a program that also writes notes on standard error."""
    return subprocess.run(command, check=True, capture_output=True).stdout


def records(handle, form):
    return {r.id: (str(r.seq), r.letter_annotations.get("phred_quality")) for r in SeqIO.parse(handle, form)}


def alignments(text):
    fields = [line.split("\t") for line in text.decode().splitlines() if not line.startswith("@")]
    return {f[0]: (f[9], [ord(c) - 33 for c in f[10]]) for f in fields}


def check_fastq(export, wanted):
    for switches in ((), ("--gzip",)):
        path = export("--format", "fastq", *switches)
        if switches:
            expect("time in the file", path.read_bytes()[4:8], bytes(4))
        with gzip.open(path, "rt") if switches else open(path) as handle:
            text = handle.read()
        expect("seqtk", run("seqtk", "seq", path).decode(), text)
        expect("Biopython fastq", records(io.StringIO(text), "fastq"), wanted)
        expect("samtools import", alignments(run("samtools", "import", "--no-PG", "-0", path)), wanted)
    plain, copy = export("--format", "fastq"), export.output / "seqret.fastq"
    quiet("seqret", "-sequence", "fastq-sanger::%s" % plain, "-outseq", "fastq-sanger::%s" % copy)
    expect("seqret", records(copy, "fastq"), wanted)


def check_fasta_and_qual(export, wanted):
    fasta = shutil.copy(export("--format", "fasta"), export.output)
    with open(fasta) as letters, gzip.open(export("--format", "qual", "--gzip"), "rt") as qualities:
        pairs = {r.id: (str(r.seq), r.letter_annotations["phred_quality"]) for r in PairedFastaQualIterator(letters, qualities)}
    expect("Biopython fasta and qual", pairs, wanted)
    for title, (letters, _) in wanted.items():
        expect("samtools faidx", run("samtools", "faidx", "-n", "1000", fasta, title).decode(), ">%s\n%s\n" % (title, letters))
    copy = export.output / "seqret.fasta"
    quiet("seqret", "-sequence", "fasta::%s" % fasta, "-outseq", "fasta::%s" % copy)
    expect("seqret", {t: s for t, (s, _) in records(copy, "fasta").items()}, {t: s for t, (s, _) in wanted.items()})


def check_phd(export, samples, wanted):
    with open(export("--format", "phd")) as handle:
        found = {r.id: r for r in SeqIO.parse(handle, "phd")}
    expect("Biopython phd", {k: (str(r.seq), r.letter_annotations["phred_quality"]) for k, r in found.items()}, wanted)
    for title, sample in samples.items():
        steps = [b - a for a, b in zip(sample.peaks, sample.peaks[1:])]
        peaks = found[title].letter_annotations["peak_location"]
        expect("peaks", [b - a for a, b in zip(peaks, peaks[1:])], steps)
        scf = next((export.output / "out").glob("*/SCF/%s.scf" % title)).read_bytes()
        scans, _, bases, _, _, first = struct.unpack_from(">6I", scf, 4)
        expect("peaks of the SCF file", peaks, list(struct.unpack_from(">%dI" % bases, scf, first)))
        expect("trace of the SCF file", found[title].annotations["trace_array_max_index"], scans - 1)


def check_alignments(export, wanted):
    for switches in (("bam",), ("sam",), ("sam", "--gzip")):
        path = export("--format", *switches)
        run("samtools", "quickcheck", "-u", path)
        text = run("samtools", "view", "--no-PG", "-h", path)
        expect("samtools view", alignments(text), wanted)
        lines = [line.split("\t") for line in text.decode().splitlines()]
        groups = [dict(field.split(":", 1) for field in f[1:]) for f in lines if f[0] == "@RG"]
        expect("read groups", [g["ID"] for g in groups], list(wanted))
        expect("units", [g["PU"] for g in groups], ["%s.%s" % (t[:2], t[2:]) for t in wanted])
        expect("groups of reads", [f[11] for f in lines if f[0][0] != "@"], ["RG:Z:" + t for t in wanted])
        expect("@PG", [f[1] for f in lines if f[0] == "@PG"], ["ID:lanetools"])
        expect("samtools fastq", records(io.StringIO(quiet("samtools", "fastq", path).decode()), "fastq"), wanted)


def check_trimming(export, samples):
    wanted = {title: mott(sample, 0.05) for title, sample in samples.items()}
    expect("trimmed", records(export("--format", "fastq", "--trim", "mott:0.05"), "fastq"), wanted)
    masked = export("--format", "fasta", "--trim", "mott:0.05", "--mask")
    found = {title: letters for title, (letters, _) in records(masked, "fasta").items()}
    expect("all of the masked", {t: s.upper() for t, s in found.items()}, {t: s.letters for t, s in samples.items()})
    for title, letters in found.items():
        expect("kept", "".join(c for c in letters if c.isupper()), wanted[title][0])


def main(lanewright, samplegen, lanetools, output):
    shutil.rmtree(output, ignore_errors=True)
    output.mkdir(parents=True)
    samples = call_plates(lanewright, samplegen, output)
    expect("samples", len(samples), 4)
    wanted = {title: (s.letters, [phred(q) for q in s.qualities]) for title, s in samples.items()}
    export = Exporter(lanetools, output)
    check_fastq(export, wanted)
    check_fasta_and_qual(export, wanted)
    check_phd(export, samples, wanted)
    check_alignments(export, wanted)
    check_trimming(export, samples)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:]))
