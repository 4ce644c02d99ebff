#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""How long stored samples take to their exports, beside io_lib's convert_trace in the same run.

usage: export_speed.py PLATE_FOLDER ROUNDS PROGRAM [OTHER_PROGRAM ...]

The plate is copied to a temporary folder and called once with the first program, and samples whose base call fails are
left out. Each round then times, one after the other, each program taking all stored samples to SCF, to ABD and to FASTA,
and convert_trace taking their ABD files to SCF in one process. Every round starts without exported files and logs and must
make every file. The table shows the best round, in milliseconds per sample, and the ratio to convert_trace: of the
elapsed time, and of the processor time alone, which depends less on what else the machine does.
"""

import os
import resource
import shutil
import subprocess
import sys
import tempfile
import time

EXPORTS = {"SCF": ("-SCF", ".scf"), "ABD": ("-ABD", ".abd"), "FASTA": ("-FA", ".seq")}


def find(folder, extension):
    return sorted(os.path.join(path, name) for path, _, names in os.walk(folder) for name in names
                  if name.endswith(extension))


def clear(*folders):
    for folder in folders:
        for extension in (".scf", ".abd", ".seq", ".log", ".xml", ".temp"):
            for path in find(folder, extension):
                os.remove(path)


def processor_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def timed(*command):
    """Elapsed and processor seconds of the command."""
    start, used = time.perf_counter(), processor_seconds()
    result = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    if result.returncode != 0:
        sys.exit("%s failed: %s" % (command[0], result.stderr.decode()))
    return time.perf_counter() - start, processor_seconds() - used


def leaf(path):
    return os.path.splitext(os.path.basename(path))[0]


def call_samples(program, plate, out):
    """Calls the samples, takes those that fail out of the plate, and gives the ABD files of the others."""
    subprocess.run([program, "-IP", plate, "-OD", out, "-BC", "-ABD"], stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    stored = {leaf(path) for path in find(out, ".esd")}
    for path in find(plate, ".rsd"):
        if leaf(path) not in stored:
            os.remove(path)
    for path in find(out, ".fsd"):
        os.remove(path)
    return [path for path in find(out, ".abd") if leaf(path) in stored]


def describe(samples, plate, rounds):
    with open("/proc/cpuinfo") as info:
        cpu = next((line.split(":")[1].strip() for line in info if line.startswith("model name")), "unknown CPU")
    commit = subprocess.run(["git", "-C", os.path.dirname(os.path.abspath(__file__)), "describe", "--always", "--dirty"],
                            capture_output=True, text=True).stdout.strip()
    size = sum(os.path.getsize(path) for path in find(plate, ".rsd"))
    print("CPU: %s\ncommit: %s\n%d samples of %d kB, best of %d rounds" % (
        cpu, commit, samples, size / samples / 1000, rounds))


def main(plate_folder, rounds, programs):
    with tempfile.TemporaryDirectory() as work:
        plate, out, kept, scf = (os.path.join(work, name) for name in ("plate", "out", "abd", "scf"))
        shutil.copytree(plate_folder, plate)
        for folder in (out, kept, scf):
            os.mkdir(folder)
        for path in call_samples(programs[0], plate, out):
            shutil.copy(path, kept)
        samples = len(find(kept, ".abd"))
        names = os.path.join(work, "names")
        with open(names, "w") as listing:
            for path in find(kept, ".abd"):
                listing.write("%s %s\n" % (path, path.replace(kept, scf)[:-4] + ".scf"))

        def export(program, name):
            switch, extension = EXPORTS[name]
            seconds = timed(program, "-IP", plate, "-OD", out, "-BC", switch)
            assert len(find(out, extension)) == samples, "not every sample was exported"
            return seconds

        def convert():
            seconds = timed("convert_trace", "-in_format", "abi", "-out_format", "scf", "-fofn", names)
            assert len(find(scf, ".scf")) == samples, "not every file was converted"
            return seconds

        rows = {(program, name): lambda program=program, name=name: export(program, name)
                for name in EXPORTS for program in programs}
        rows["convert_trace", ""] = convert
        best = {row: (float("inf"), float("inf")) for row in rows}
        for _ in range(rounds):
            for row, run in rows.items():
                clear(plate, out, scf)
                best[row] = tuple(map(min, best[row], run()))
        describe(samples, plate, rounds)
        print("%-6s %14s %6s %12s %6s" % ("to", "ms per sample", "ratio", "processor ms", "ratio"))
        elapsed, used = best["convert_trace", ""]
        for (program, name), (seconds, processor) in best.items():
            print("%-6s %14.3f %6.2f %12.3f %6.2f  %s" % (name or "SCF", 1000 * seconds / samples, seconds / elapsed,
                                                          1000 * processor / samples, processor / used, program))


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main(sys.argv[1], int(sys.argv[2]), sys.argv[3:])
