#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Finds the mixed sites of synthetic reads in what lanetools lists and exports.

usage: check_mixed.py LANEWRIGHT SAMPLEGEN LANETOOLS OUTPUT

Two plates are called in the folder OUTPUT, which is created again: one with mixed sites from base 100 on, one without and with a
failed well. Exit code 0 when all is as it should be.
"""

import csv
import io
import pathlib
import shutil
import subprocess
import sys

from Bio import Align, SeqIO

CODES = {"AC": "M", "AG": "R", "AT": "W", "CG": "S", "CT": "Y", "GT": "K"}
RATIO = 0.33


def run(*words, code=0):
    done = subprocess.run([str(word) for word in words], capture_output=True, text=True, check=False)
    if done.returncode != code:
        sys.exit(f"exit code {done.returncode} instead of {code}: {words}\n{done.stdout}{done.stderr}")
    return done.stdout


def reads(path):
    return {record.id: str(record.seq) for record in SeqIO.parse(path, "fasta")}


def true_places(truth, called):
    """The base of each true mixed site that the read covers, from 1, and its code."""
    aligner = Align.PairwiseAligner(mode="local", wildcard="N", match_score=1, mismatch_score=-2, gap_score=-3)
    plain = "".join(letter if letter in "ACGT" else "N" for letter in truth)
    places = {}
    for (first, end), (start, _) in zip(*aligner.align(plain, called)[0].aligned):
        places.update({start + i - first + 1: truth[i] for i in range(first, end) if truth[i] not in "ACGT"})
    return places


def main():
    lanewright, samplegen, lanetools = sys.argv[1:4]
    output = pathlib.Path(sys.argv[4])
    shutil.rmtree(output, ignore_errors=True)
    output.mkdir(parents=True)
    run(samplegen, output / "mixed", "-p", "mixed", "--wells", 3, "--seed", 4, "--mixed-from", 100, "--mixed-every", 12)
    run(samplegen, output / "pure", "-p", "pure", "--wells", 3, "--failed", 1, "--seed", 5)
    out = output / "out"
    run(lanewright, "-IP", output / "mixed", output / "pure", "-OD", out, "-BC", code=0)

    table = run(lanetools, "mixed", out, "--ratio", RATIO, code=3)  # the failed well
    rows = list(csv.DictReader(io.StringIO(table), delimiter="\t"))
    run(lanetools, "export", out, "-o", output / "called", "--format", "fasta", "--per", "run", "--name", "{file}", code=3)
    run(lanetools, "export", out, "-o", output / "codes", "--format", "fasta", "--per", "run", "--name", "{file}",
        "--mixed", RATIO, code=3)
    called, codes = (reads(next((output / name).rglob("*.fasta"))) for name in ("called", "codes"))
    truth = reads(output / "mixed" / "truth.fasta") | reads(output / "pure" / "truth.fasta")
    assert len(called) == 5, called.keys()
    summary = [row for row in csv.DictReader(io.StringIO(run(lanetools, "summary", out, code=3)), delimiter="\t")
               if row["state"] == "called"]
    good = {row["file"]: range(int(row["good_start"]), int(row["good_start"]) + int(row["good_length"]))
            for row in summary}
    counts = {row["file"]: int(row["mixed"]) for row in summary}
    true = found = false = 0
    for name, letters in called.items():
        listed = {int(row["base"]): row for row in rows if row["file"] == name}
        assert counts[name] == len(listed), f"{name}: {counts[name]} in the summary, {len(listed)} listed"
        expected = {base: code for base, code in true_places(truth[name], letters).items() if base in good[name]}
        true += len(expected)
        found += sum(base in listed and listed[base]["code"] == code for base, code in expected.items())
        false += sum(base not in expected for base in listed)
        for base, row in listed.items():
            assert base in good[name] and float(row["ratio"]) >= RATIO and 0 <= int(row["quality"]) <= 93, row
            assert len(row["letters"]) > 2 or CODES["".join(sorted(row["letters"]))] == row["code"], row
            assert codes[name][base - 1] == row["code"], row
        changed = [i + 1 for i, pair in enumerate(zip(letters, codes[name])) if pair[0] != pair[1]]
        assert len(letters) == len(codes[name]) and [base for base in changed if base in good[name]] == sorted(listed), name
    assert true > 80 and found >= 0.9 * true, f"{found} of {true} mixed sites were found"
    assert false <= 0.005 * sum(map(len, good.values())), f"{false} places are called mixed"
    assert run(lanetools, "mixed", out, "--ratio", 1.5, code=2) == ""
    whole = run(lanetools, "mixed", out, "--whole", "-o", output / "table.tsv", code=3)
    assert whole == "" and (output / "table.tsv").read_text().count("\n") >= table.count("\n")


main()
