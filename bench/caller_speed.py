#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""CPU time of calling bases, beside TraceTuner's ttuner on the same reads in the same run.

The reads are those with a sample NAME.rsd in one of the plates and a chromatogram NAME.ab1 in the folder of ABIF files. Each
round runs, one after the other and every other round in reverse, for each PROGRAM (one lanewright or several, say before and
after a change):

  whole   PROGRAM -IP PLATE -OD OUT -BC into an empty folder: start, reading, calling with the default library, storing
  again   the same command on what the first one stored: start and reading alone; nothing is called or stored
  ttuner  ttuner -Q -if LIST -o OUT: its default mode, reading, calling and writing one FASTA file each of letters, positions
          and qualities

Measured is the CPU time, user and system, of the whole process of each command, divided by the reads. Nothing is taken off;
"calling" is whole less again, so it holds the library's work and the storing. A first round warms up and is not counted. The
table shows medians over the rounds and the median, least and greatest of the ratios to ttuner in the same round.

The two do not do the same work: lanewright starts from the raw channels (baseline, dyes, mobility, spacing); ttuner starts from
the processed curves and the calls that the instrument's software left in the ABIF file, and calls again.
"""

import argparse
import os
import pathlib
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile

TRAILER, SCANS_AT = 632, 616  # of a sample file: bytes of the trailer, and where in it the number of scans stands


def cpu_seconds(*command):
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit("%s ended with code %d" % (command[0], process.returncode))
    return usage.ru_utime + usage.ru_stime


def processor():
    lines = pathlib.Path("/proc/cpuinfo").read_text().splitlines()
    names = [line.split(":", 1)[1].strip() for line in lines if line.startswith("model name")]
    return "%d x %s" % (len(names), names[0]) if names else "unknown"


def commit_of(program):
    git = ["git", "-C", program.parent]
    commit = subprocess.run([*git, "rev-parse", "--short", "HEAD"], capture_output=True, text=True)
    if commit.returncode != 0:
        return "in no git tree"
    changed = subprocess.run([*git, "status", "--porcelain", "-uno"], capture_output=True, text=True).stdout
    return "tree at commit " + commit.stdout.strip() + (" with changes" if changed else "")


def scans_of(path):
    data = path.read_bytes()
    return struct.unpack_from("<I", data, len(data) - TRAILER + SCANS_AT)[0]


class Caller:
    """One lanewright with a plate and an output folder of its own."""

    def __init__(self, program, samples, folder):
        self.program = program
        self.plate, self.out = folder / "plate", folder / "out"
        self.plate.mkdir(parents=True)
        for sample in samples:
            shutil.copy(sample, self.plate)

    def run(self):
        return cpu_seconds(self.program, "-IP", self.plate, "-OD", self.out, "-BC")

    def measure(self):
        shutil.rmtree(self.out, ignore_errors=True)
        self.out.mkdir()
        whole, again = self.run(), self.run()
        return {"whole": whole, "again": again, "calling": whole - again}

    def outcome(self):
        return "%d called, %d failed" % tuple(len(list(self.out.rglob("*." + kind))) for kind in ("esd", "fsd"))


class TraceTuner:
    def __init__(self, chromatograms, folder):
        self.listing, self.out = folder / "list", folder / "tt"
        self.out.mkdir()
        self.listing.write_text("".join("%s\n" % path for path in chromatograms))

    def measure(self):
        for path in self.out.iterdir():
            path.unlink()
        return {"whole": cpu_seconds("ttuner", "-Q", "-if", self.listing, "-o", self.out)}

    def outcome(self):
        lines = (self.out / "tt.status").read_text().splitlines()
        called = sum("TT_SUCCESS" in line for line in lines)
        return "%d called, %d failed" % (called, len(lines) - called)


def print_table(seconds, reads):
    print("%-12s %-8s %10s %7s  %s" % ("", "", "ms a read", "ratio", "least to greatest"))
    for name, parts in seconds.items():
        for part, values in parts.items():
            ratios = [value / base for value, base in zip(values, seconds["ttuner"]["whole"])]
            print("%-12s %-8s %10.2f %7.2f  %.2f to %.2f" % (name, part, 1000 * statistics.median(values) / reads,
                                                           statistics.median(ratios), min(ratios), max(ratios)))


def main(programs, plates, abif, rounds):
    samples = {path.stem: path for plate in plates for path in sorted(plate.glob("*.rsd"))}
    stems = sorted(path.stem for path in abif.glob("*.ab1") if path.stem in samples)
    if not stems:
        sys.exit("no read has a sample in the plates and a chromatogram in %s" % abif)
    scans = [scans_of(samples[stem]) for stem in stems]
    print("CPU: " + processor())
    for number, program in enumerate(programs, 1):
        print("program %d: %s, %s" % (number, program, commit_of(program)))
    print("%d reads of %d to %d scans, %d on average; %d rounds" %
          (len(stems), min(scans), max(scans), sum(scans) / len(scans), rounds))
    with tempfile.TemporaryDirectory() as work:
        work = pathlib.Path(work)
        rows = {"program %d" % number: Caller(program, [samples[stem] for stem in stems], work / str(number))
                for number, program in enumerate(programs, 1)}
        rows["ttuner"] = TraceTuner([(abif / stem).resolve().with_suffix(".ab1") for stem in stems], work)
        seconds = {name: {} for name in rows}
        for turn in range(rounds + 1):
            for name in sorted(rows, reverse=turn % 2 == 0):
                for part, value in rows[name].measure().items():
                    seconds[name].setdefault(part, []).extend([value] if turn > 0 else [])
        for name, row in rows.items():
            print("%s: %s" % (name, row.outcome()))
    print_table(seconds, len(stems))


if __name__ == "__main__":
    parser = argparse.ArgumentParser(usage="%(prog)s PROGRAM... --plates FOLDER... --abif FOLDER [--rounds N]", description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("programs", nargs="+", type=pathlib.Path)
    parser.add_argument("--plates", nargs="+", type=pathlib.Path, required=True)
    parser.add_argument("--abif", type=pathlib.Path, required=True)
    parser.add_argument("--rounds", type=int, default=10)
    main(**vars(parser.parse_args()))
