#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Fits the model of Lanecall's qualities and prints it as QualityTable.h.

    fit.py CALL-FEATURES PLATE [PLATE ...] [--synthetic PLATE ...] [--leave-out PART] >QualityTable.h

CALL-FEATURES is the program build/bin/call-features. Each PLATE is a folder with

- raw samples (.rsd);
- reference.fasta, whose records have the names of the samples without extension;
- quality.tsv: per line such a name, a tab, and the Phred qualities of the reference's bases, separated by commas.

A synthetic PLATE is one that samplegen has made, with truth.fasta. Needs numpy and Biopython.

The model: each feature has a curve, linear between knots, and the sum of the curves is the log odds that the call is
wrong. The curves are fitted by penalised logistic regression to all calls that the alignment with the reference covers.
References have errors too, so a mismatch counts as an error of the call only with the probability that the call and not
the reference is wrong; this is computed from both error probabilities, in three rounds. A monotone table then turns the
sum into a Phred value. It is made from sums that each read gets from curves fitted without it (the reads are divided
into six parts). A bin of the table without errors counts as one with half an error.
"""

import argparse
import os
import subprocess
import sys

import numpy as np
from Bio import Align, SeqIO

FEATURES = {  # in the order of the enumeration; the knots of each
    "rival": [0, .05, .1, .2, .35, .5, .75, 1, 1.5],
    "rivalNear": [0, .05, .1, .2, .35, .6, .9, 1.5],
    "rivalAround": [0, .05, .1, .17, .25, .4, .6, .9],
    "rivalRaw": [0, .05, .1, .2, .4, .7, 1, 1.5],
    "height": [0, .3, .5, .7, .85, 1, 1.2, 1.5, 2.5],
    "gap": [0, .05, .1, .15, .25, .4, 1],
    "unevenness": [0, .03, .05, .08, .13, .2, .3, 1],
    "resolution": [.15, .25, .3, .36, .45, .55, .7, .9],
    "noise": [0, .01, .02, .04, .08, .16, .3, 1],
    "valley": [0, .2, .5, .8, 1],
    "passed": [0, .05, .1, .2, .4, .7, 1.2],
    "second": [0, .03, .06, .1, .2, .35, .6, 1, 1.5],
}
GAP = list(FEATURES).index("gap")
SYNTHETIC_WEIGHT = 0.2  # of a synthetic call, by trial: its truth is certain, but it is cleaner than a real one
DOUBTFUL = -2.5  # calls with sums above this are wrong once in ten times or more often
MOST_PHRED = 50  # proved by 50,000 calls with half an error or less
PARTS = 4
AMBIGUOUS = {"R": "AG", "Y": "CT", "S": "CG", "W": "AT", "K": "GT", "M": "AC",
             "B": "CGT", "D": "AGT", "H": "ACT", "V": "ACG", "N": "ACGT"}


def read_fasta(path):
    return {os.path.basename(r.id).split(".")[0]: str(r.seq).upper() for r in SeqIO.parse(path, "fasta")}


def read_quality(path):
    with open(path) as lines:
        rows = [line.rstrip("\n").split("\t") for line in lines]
    return {row[0]: [int(v) for v in row[1].split(",")] for row in rows if len(row) > 1 and row[1]}


def trusted_bases(quality):
    """Length of the stretch with the greatest sum of 0.01 - error."""
    best = total = length = start = 0
    for i, q in enumerate(quality):
        if total <= 0:
            total, start = 0, i
        total += 0.01 - 10 ** (-q / 10)
        if total > best:
            best, length = total, i + 1 - start
    return length


def aligner():
    one = Align.PairwiseAligner()
    one.mode = "global"
    one.match_score, one.mismatch_score, one.gap_score = 0, -1, -1
    one.target_end_gap_score = 0  # the whole reference is aligned with a part of the call
    return one


def least_even(j, letters, unevenness):
    """Which call of a run of one letter is surplus: the alignment does not show it, so the least evenly spaced is taken."""
    first, last = j, j
    while first > 0 and letters[first - 1] == letters[j]:
        first -= 1
    while last + 1 < len(letters) and letters[last + 1] == letters[j]:
        last += 1
    return max(range(first, last + 1), key=lambda k: unevenness[k])


def judge(reference, quality, letters, unevenness):
    """For each call that the reference covers: its index, whether it is wrong, the reference's error probability."""
    blocks = aligner().align(reference, letters)[0].aligned
    first, last = blocks[1][0][0], blocks[1][-1][1]
    target = {}
    for (a, b), (c, _) in zip(*blocks):
        for k in range(b - a):
            target[c + k] = a + k
    surplus = {least_even(j, letters, unevenness) for j in range(first, last) if j not in target}
    if quality is None:  # before and after a synthetic read there is nothing to call
        for j in [*range(first), *range(last, len(letters))]:
            yield j, True, 0.0
    for j in range(first, last):
        i = target.get(j)
        if j in surplus:
            yield j, True, 0.0
        elif i is None:
            yield j, False, 0.0
        elif letters[j] in AMBIGUOUS.get(reference[i], reference[i]):
            yield j, False, 0.0 if quality is None else 10 ** (-quality[i] / 10)
        elif reference[i] not in AMBIGUOUS or quality is None:
            yield j, True, 0.0 if quality is None else 10 ** (-quality[i] / 10)


def calls_of(program, plate):
    files = sorted(os.path.join(plate, n) for n in os.listdir(plate) if n.endswith(".rsd"))
    text = subprocess.run([program] + files, stdout=subprocess.PIPE, check=True).stdout.decode()
    calls = {}
    for line in text.splitlines():
        fields = line.split("\t")
        calls.setdefault(fields[0], []).append(fields[1:])
    return calls


def load(program, plates, synthetic):
    """Of all calls that can be judged: features, whether wrong, error probability of the reference, number of the read."""
    rows, wrong, doubt, reads, count = [], [], [], [], 0
    for plate in plates:
        references = read_fasta(os.path.join(plate, "truth.fasta" if synthetic else "reference.fasta"))
        qualities = {} if synthetic else read_quality(os.path.join(plate, "quality.tsv"))
        for stem, calls in sorted(calls_of(program, plate).items()):
            reference, quality = references.get(stem), qualities.get(stem)
            if not reference:
                continue
            if not synthetic and (not quality or len(quality) != len(reference) or trusted_bases(quality) < 50):
                continue
            letters = "".join(c[0] for c in calls)
            unevenness = [float(c[1 + GAP]) for c in calls]
            for j, is_wrong, error in judge(reference, quality, letters, unevenness):
                rows.append([float(v) for v in calls[j][1:]])
                wrong.append(is_wrong)
                doubt.append(error)
                reads.append(count)
            count += 1
    return np.array(rows), np.array(wrong, float), np.array(doubt), np.array(reads)


def design(rows):
    columns = [np.ones((len(rows), 1))]
    for k, knots in enumerate(FEATURES.values()):
        knots = np.array(knots)
        x = np.clip(rows[:, k], knots[0], knots[-1])
        i = np.clip(np.searchsorted(knots, x, "right") - 1, 0, len(knots) - 2)
        share = (x - knots[i]) / (knots[i + 1] - knots[i])
        part = np.zeros((len(x), len(knots)))
        at = np.arange(len(x))
        part[at, i], part[at, i + 1] = 1 - share, share
        columns.append(part)
    return np.hstack(columns)


def penalty(bend=20, slope=0.5, size=0.5):
    total = 1 + sum(map(len, FEATURES.values()))
    matrix, at = np.zeros((total, total)), 1
    matrix[0, 0] = 1e-3
    for knots in FEATURES.values():
        n = len(knots)
        one, two = np.diff(np.eye(n), 1, axis=0), np.diff(np.eye(n), 2, axis=0)
        matrix[at:at + n, at:at + n] = bend * two.T @ two + slope * one.T @ one + size * np.eye(n)
        at += n
    return matrix


def fit(columns, wrong, doubt, weights, start=None):
    target, punish = wrong.copy(), penalty()
    curves = np.zeros(columns.shape[1]) if start is None else start.copy()
    if start is None:
        curves[0] = -3
    for _ in range(3):
        for _ in range(12):
            p = 1 / (1 + np.exp(-columns @ curves))
            slope = columns.T @ (weights * (target - p)) - punish @ curves
            bend = (columns * (weights * p * (1 - p))[:, None]).T @ columns + punish
            step = np.clip(np.linalg.solve(bend, slope), -3, 3)
            curves += step
            if np.abs(step).max() < 1e-3:
                break
        p = 1 / (1 + np.exp(-columns @ curves))
        ours = p * (1 - doubt) / (p * (1 - doubt) + doubt * (1 - p) + 1e-12)
        target = np.where(wrong > 0, ours, 0.0)
    return curves, target


def monotone_table(sums, errors, weights):
    """Knots of the table, each a sum and a Phred value: means over bins of the sums. Bins are smaller where errors are
    frequent; neighbours whose values do not descend are merged, and the clearest ones until they have three errors."""
    order = np.argsort(sums)
    pools, at = [], 0
    while at < len(order):
        size = int(np.clip(40 / max(errors[order[at:at + 400]].mean(), 1e-3), 200, 4000))
        part = order[at:at + size]
        at += size
        weight = weights[part]
        pools.append([(sums[part] * weight).sum(), (errors[part] * weight).sum(), weight.sum(), sums[part[-1]]])
        while len(pools) > 1 and pools[-2][1] / pools[-2][2] >= pools[-1][1] / pools[-1][2]:
            last = pools.pop()
            pools[-1] = [a + b for a, b in zip(pools[-1][:3], last)] + [last[3]]
    while len(pools) > 1 and pools[0][1] < 3:
        first = pools.pop(0)
        pools[0] = [a + b for a, b in zip(first[:3], pools[0])] + [pools[0][3]]
    table = [(s / n, min(MOST_PHRED, -10 * np.log10(max(e, 0.5) / n))) for s, e, n, _ in pools]
    # One value for all of the clearest calls: the data do not distinguish them any further.
    kept = [table[0], (pools[0][3], table[0][1])]
    for place, phred in table[1:]:
        if phred < kept[-1][1] - 0.4:
            kept.append((place, phred))
    return kept


def report(phreds, wrong, doubt):
    """Prints, by bins of the Phred values that reads get from curves fitted without them, how often calls are wrong."""
    print("phred\tcalls\tstated\tmismatching\tat best", file=sys.stderr)
    bins = [0, 3, 5, 7, 10, 12, 15, 17, 20, 23, 26, 30, 35, 40, 94]
    for low, high in zip(bins, bins[1:]):
        held = (phreds >= low) & (phreds < high)
        count = held.sum()
        if not count:
            continue
        most = max(0.5, wrong[held].sum())
        least = max(0.5, wrong[held].sum() - doubt[held].sum())
        values = [(10 ** (-phreds[held] / 10)).mean(), most / count, least / count]
        print(f"{low}-{high}\t{count}\t" + "\t".join(f"{-10 * np.log10(v):.1f}" for v in values), file=sys.stderr)


def numbers(values, digits):
    return ", ".join(f"{v:.{digits}f}".rstrip("0").rstrip(".") or "0" for v in values)


def print_header(curves, table, note):
    print("""// SPDX-License-Identifier: MIT
// The model of the qualities, made by tools/qualityfit/fit.py, whose head says how; do not edit. """ + note + """
#pragma once

#include "lanecall/KnotCurve.h"

namespace lanecall {

inline constexpr QualityModel qualityModel = {""")
    print(f"    {curves[0]:.3f},\n    {{{{")
    at = 1
    for name, knots in FEATURES.items():
        print(f"        // {name}\n        {{{len(knots)}, {{{numbers(knots, 2)}}}, {{{numbers(curves[at:at + len(knots)], 3)}}}}},")
        at += len(knots)
    print("    }},\n    // log odds of an error, Phred value")
    print(f"    {{{len(table)},\n     {{{numbers([t[0] for t in table], 3)}}},\n     {{{numbers([t[1] for t in table], 2)}}}}},\n}};\n")
    print("}  // namespace lanecall")


def concatenated(first, second):
    return [np.concatenate(pair) for pair in zip(first, second)]


def left_out(real, synthetic, part, curves):
    """The sum of each real call, from curves that were fitted without its part of the reads."""
    columns = real[0]
    sums = np.zeros(len(columns))
    for k in sorted(set(part)):
        rest = part != k
        others, _ = fit(*concatenated([a[rest] for a in real], synthetic), start=curves)
        sums[~rest] = columns[~rest] @ others
    return sums


def table_of(sums, errors, weights, curves, synthetic):
    """The monotone table, from the real calls and from synthetic calls of nothing: where references of real reads end,
    only synthetic reads show what a call of nothing looks like."""
    columns, wrong, _, synthetic_weights = synthetic
    synthetic_sums = columns @ curves
    doubtful = synthetic_sums > DOUBTFUL
    return monotone_table(*concatenated([sums, errors, weights],
                                        [synthetic_sums[doubtful], wrong[doubtful], synthetic_weights[doubtful]]))


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program")
    parser.add_argument("plates", nargs="+")
    parser.add_argument("--synthetic", nargs="*", default=[])
    parser.add_argument("--leave-out", type=int, metavar="PART", help="fit without the reads of this part, 0 to 5")
    return parser.parse_args()


def main():
    args = arguments()
    rows, wrong, doubt, reads = load(args.program, args.plates, False)
    part = reads * PARTS // (reads.max() + 1)
    if args.leave_out is not None:
        keep = part != args.leave_out
        rows, wrong, doubt, reads, part = rows[keep], wrong[keep], doubt[keep], reads[keep], part[keep]
    real = [design(rows), wrong, doubt, np.ones(len(rows))]
    synthetic = [np.zeros((0, real[0].shape[1])), np.zeros(0), np.zeros(0), np.zeros(0)]
    if args.synthetic:
        rows, wrong_calls, doubts, _ = load(args.program, args.synthetic, True)
        synthetic = [design(rows), wrong_calls, doubts, np.full(len(rows), SYNTHETIC_WEIGHT)]
    curves, target = fit(*concatenated(real, synthetic))
    errors = target[:len(wrong)]
    sums = left_out(real, synthetic, part, curves)
    table = table_of(sums, errors, real[3], curves, synthetic)
    counts = f"{len(wrong)} calls, and {len(synthetic[1])} synthetic calls."
    print_header(curves, table, f"From {len(set(reads))} real reads,\n// {counts}")
    report(np.interp(sums, *zip(*table)), wrong, doubt)
    print(f"{len(wrong)} calls, {int(wrong.sum())} mismatches, {errors.sum():.0f} of them errors of the calls",
          file=sys.stderr)


if __name__ == "__main__":
    main()
