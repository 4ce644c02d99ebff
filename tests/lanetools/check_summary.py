#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Compares the summary of a plate with its own figures, and shows it with MultiQC.

usage: check_summary.py LANETOOLS LANEWRIGHT PLATE OUTPUT

PLATE is called into OUTPUT, which is created again. One result is removed and one damaged. Exit code 0 when all agree.
"""

import html
import json
import math
import pathlib
import re
import shutil
import struct
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "readers"))
from check_readers import TRAILER, flatten  # noqa: E402


def phred(percent):
    if math.isnan(percent):
        return 0.0
    probability = (100 - percent) / 100
    return min(93.0, max(0.0, -10 * math.log10(probability))) if probability > 0 else 93.0


def at_least(value, limit):
    return value >= limit - 1e-9


def longest_run(phreds):
    best = run = 0
    for i in range(len(phreds)):
        window = phreds[max(0, i - 10) : i + 11]
        run = run + 1 if at_least(sum(window) / len(window), 20) else 0
        best = max(best, run)
    return best


def tail_size(data):
    return struct.unpack_from("<I", data, len(data) - TRAILER + 454)[0] or TRAILER


def figures(stored, raw):
    keys = {}
    flatten(stored[len(stored) - tail_size(stored) : -TRAILER], 0, -1, "", keys)
    phreds = [phred(quality) for quality in keys["QUALITY SCORES"]]
    start, end = keys["START GOOD SEQUENCE"][0], keys["END GOOD SEQUENCE"][0]
    good = phreds[start : end + 1]
    peaks = [max(struct.unpack_from("<4I", raw, at + 4)) for at in range(0, len(raw) - tail_size(raw), 20)]
    return {
        "bases": len(keys["SEQUENCE"]),
        "good_start": start + 1,
        "good_length": len(good),
        "q20": sum(at_least(one, 20) for one in phreds),
        "q30": sum(at_least(one, 30) for one in phreds),
        "crl": longest_run(phreds),
        "trace_score": sum(good) / len(good),
        "raw_peak": max(peaks),
    }


def differ(mine, theirs):
    return abs(mine - theirs) > 0.0501 if isinstance(mine, float) else mine != theirs


ODD_NAMES = "0012345", "1e5", "=+1,234"


def main(lanetools, lanewright, plate, output):
    shutil.rmtree(output, ignore_errors=True)
    output.mkdir(parents=True)
    calls = output / "calls"
    raws = output / "plate"
    shutil.copytree(plate, raws)
    # Names that a program for numbers takes for something else.
    for path, name in zip(sorted(raws.glob("*.rsd")), ODD_NAMES):
        path.rename(raws / (name + ".rsd"))
    subprocess.run([lanewright, "-IP", raws, "-OD", calls, "-BC"], check=True, stdout=subprocess.DEVNULL)
    results = sorted(calls.glob("*/*.esd"))
    results[0].unlink()
    results[1].write_bytes(results[1].read_bytes()[:-1])
    command = [lanetools, "summary", calls, "--raw", raws]
    code = subprocess.run([*command, "--format", "json", "-o", output / "summary.json"]).returncode
    rows = {row["file"]: row for row in json.loads((output / "summary.json").read_text())["samples"]}
    faults = [] if code == 3 else ["exit code %d" % code]
    if rows[results[0].stem]["state"] != "missing" or rows[results[1].stem]["state"] != "damaged":
        faults.append("a result that is missing or damaged was not noticed")
    for path in results[2:]:
        mine = figures(path.read_bytes(), (raws / (path.stem + ".rsd")).read_bytes())
        for name, value in mine.items():
            if differ(value, rows[path.stem][name]):
                faults.append("%s: %s is %s and not %s" % (path.stem, name, rows[path.stem][name], value))

    subprocess.run([*command, "--format", "multiqc", "-o", output / "report"])
    subprocess.run(["multiqc", "-q", "-f", "-o", output / "page", output / "report"], check=True)
    page = (output / "page/multiqc_report.html").read_text()
    for part in ("States", "Samples", "Wells"):
        if page.count('<h3 id="lanetools_%s"' % part.lower()) != 1:
            faults.append("the page has no section " + part)
    shown = [html.unescape(name) for name in re.findall('<td class="file hidden">(.*?)</td>', page)]
    if sorted(shown) != sorted(rows):
        faults.append("the page shows the names %s" % shown)
    table = (output / "page/multiqc_data/multiqc_lanetools_samples_table.txt").read_text().splitlines()
    if len(table) != len(rows) + 1:
        faults.append("the page's table has %d lines" % len(table))
    for fault in faults:
        print(fault)
    print("%d samples compared" % (len(results) - 2))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2], *map(pathlib.Path, sys.argv[3:5])))
