#!/usr/bin/python3
"""How long stored samples take to their exports, beside io_lib's convert_trace in the same run.

usage: export_speed.py PROGRAM PLATE_FOLDER [ROUNDS]

The plate is copied to a temporary folder and called once. Each round then times, one after the other, the program taking
all stored samples to SCF, to ABD and to FASTA, and convert_trace taking their ABD files to SCF in one process. Every round
starts without exported files and logs. The table shows the best round, in milliseconds a sample, and the ratio to
convert_trace.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time


def find(folder, extension):
    return sorted(os.path.join(path, name) for path, _, names in os.walk(folder) for name in names
                  if name.endswith(extension))


def clear(*folders):
    for folder in folders:
        for extension in (".scf", ".abd", ".seq", ".log", ".xml", ".temp"):
            for path in find(folder, extension):
                os.remove(path)


def timed(*command):
    start = time.perf_counter()
    result = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    if result.returncode != 0:
        sys.exit("%s failed: %s" % (command[0], result.stderr.decode()))
    return time.perf_counter() - start


def main(program, plate_folder, rounds):
    with tempfile.TemporaryDirectory() as work:
        plate, out, kept = (os.path.join(work, name) for name in ("plate", "out", "abd"))
        shutil.copytree(plate_folder, plate)
        os.mkdir(out)
        os.mkdir(kept)
        run = lambda *switches: timed(program, "-IP", plate, "-OD", out, "-BC", *switches)
        run("-ABD")
        for path in find(out, ".abd"):
            shutil.copy(path, kept)
        names = os.path.join(work, "names")
        with open(names, "w") as listing:
            for path in find(kept, ".abd"):
                listing.write("%s %s\n" % (path, path.replace(kept, work)[:-4] + ".scf"))
        rows = {
            "to SCF": lambda: run("-SCF"),
            "to ABD": lambda: run("-ABD"),
            "to FASTA": lambda: run("-FA"),
            "convert_trace": lambda: timed("convert_trace", "-in_format", "abi", "-out_format", "scf", "-fofn", names),
        }
        best = dict.fromkeys(rows, float("inf"))
        for _ in range(rounds):
            for name, row in rows.items():
                clear(plate, out)
                for path in os.listdir(work):
                    if path.endswith(".scf"):
                        os.remove(os.path.join(work, path))
                best[name] = min(best[name], row())
        samples = len(find(out, ".esd"))
        print("%d samples, best of %d rounds" % (samples, rounds))
        print("%-14s %12s %6s" % ("", "ms a sample", "ratio"))
        for name, seconds in best.items():
            print("%-14s %12.3f %6.2f" % (name, 1000 * seconds / samples, seconds / best["convert_trace"]))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], int(sys.argv[3]) if len(sys.argv) > 3 else 10)
