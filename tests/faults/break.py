#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the program over a small plate with every export again and again, each time with one call that goes wrong, and judges
the result.

usage: break.py [options] PROGRAM SAMPLEGEN SHIM

PROGRAM stands in an installation with a base caller. With --tools LANETOOLS it is that program that is run, once per
subcommand (see tools.py). What goes wrong, and in which run:

    cold            nothing has been called yet
    second          everything has been called and exported before
    EIO ENOSPC EMFILE ENOMEM EINTR EACCES    the N-th system call fails with this
    kill            the process is killed before the N-th system call
    half            the N-th write writes half of its bytes, then the process is killed
    short           the N-th read or write moves half of its bytes
    memory          the N-th allocation fails
    ENOSPC+ EMFILE+ memory+    all from the N-th on fail: a full disk, no descriptors, no memory

What must hold after it:

    raw files and settings are unchanged; a file under a final name is whole: one that undisturbed runs write or, where a
    failure is reported, a failed form; what an earlier run made is still there; what is reported as made is there; what is
    missing is reported; once a sample has been loaded the run goes on to its end; the logs hold whole entries; a process
    that was not killed leaves nothing else; and an undisturbed run afterwards completes everything, reports nothing odd and
    leaves nothing else either.

A half write may tear basecall.log and common FASTA files, to which one write adds: the system completes a write.
"""

import argparse
import collections
import errno
import multiprocessing
import os
import pathlib
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile

import shimmed
import tools
import whole
from shimmed import CLASSES, ERRORS, Case, steady_name

ROUNDS = ["cold", "second"]
SWITCHES = "-IP plate -OD out -BC -ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT".split()
OUTPUT = "out/plate_LC1_QX1/"
COMMON = [OUTPUT + "FASTA/plate_LC1_QX1.seq", "out/out.seq"]
LOG, MARKUP, FORMER = "plate/basecall.log", "plate/log.xml", "plate/log.xml.temp"
INSTALLED = ["lanewright", "lanecall.so", "basecall.ini", "registry.ini", "dyeMethod1.ini"]
TAG_IS_MISSING = "The SafeArray Allocation Failed"  # and the ABD file goes without that tag
ERROR_TEXT = "|".join([os.strerror(getattr(errno, name)) for name in ERRORS + ["ENOENT"]] + ["Not enough storage[^.]*[.]", "Unspecified error"])
FAILURE = re.compile(
    r"failed to|[Cc]annot |Access is denied|warning: |Fatal Error|doesn't exist|not listed|Syntax error|not enough disk space"
    r"|skipped (?!out/)|skipped \.|The base order is not specified|" + TAG_IS_MISSING + "|" + ERROR_TEXT
)
KNOWN_TEXT = re.compile(r"(successfully basecalled|exported to SCF file format|The processed file|skipped) .*(\.so|\.scf|exists\.|\.esd)"
                        r"|Using base order [A-Z]{4}\. ")


def look(folder):
    """Bytes of the files below a folder by path, the log without its times; None for what is no regular file."""
    state = {}
    for path in sorted(folder.rglob("*")):
        name = str(path.relative_to(folder))
        if not re.match("bin/[^.]", name) and (path.is_symlink() or not path.is_dir()):
            state[name] = path.read_bytes() if path.is_file() and not path.is_symlink() else None
    if state.get(LOG):
        state[LOG] = re.sub(rb"(\tLoading \S+  \S+  )[^\r]*", rb"\1TIME", state[LOG])
    return state


def run_program(folder, shim, case=None):
    return shimmed.run(["bin/lanewright"] + SWITCHES, folder, shim, case, {"FAULT_LINKER": "1"}.items())


def copy_tree(source, target):
    """A copy of a template; the programs are shared, the rest is not."""
    shutil.copytree(source, target, copy_function=lambda a, b: (
        os.link if os.path.basename(a) in INSTALLED[:2] else shutil.copyfile)(a, b))


def entries_of(state):
    """The entries of log.xml; none where it is torn, which has been noted."""
    try:
        return collections.Counter(whole.markup_log(state.get(MARKUP) or b""))
    except whole.Torn:
        return collections.Counter()


class Bench:
    """The plate before and after undisturbed runs, and what those runs printed."""

    def __init__(self, folder, program, samplegen, shim):
        self.folder, self.shim = folder, shim
        shimmed.demand_known_calls(program, shim)
        start = folder / "start"
        shutil.copytree(program.parent, start / "bin", ignore=lambda _, names: set(names) - set(INSTALLED))
        subprocess.run([samplegen, "plate", "--plate", "run1", "--wells", "3", "--failed", "1", "--bases", "60", "--seed", "20"],
                       cwd=start, check=True, stdout=subprocess.DEVNULL)
        # A separation matrix that matters, so that a run without it has another result.
        shutil.copyfile(start / "plate/dyeMethod1.ini", start / "bin/dyeMethod1.ini")
        (start / "out").mkdir()
        self.states, self.runs = [look(start)], []
        for before, after in (("start", "once"), ("once", "twice"), ("twice", "thrice")):
            copy_tree(folder / before, folder / after)
            self.runs.append(run_program(folder / after, shim))
            if self.runs[-1].code != 0 or self.runs[-1].errors:
                raise SystemExit("the undisturbed run fails: " + self.runs[-1].output + self.runs[-1].errors)
            self.states.append(look(folder / after))
        self.samples = [name[len("plate/") : -4] for name in self.states[0] if name.endswith(".rsd")]
        self.called = [name for name in self.samples if OUTPUT + name + ".esd" in self.states[1]]
        if len(self.samples) != 3 or len(self.called) != 2:
            raise SystemExit("the plate is not what the cases are made for")
        # A stored sample is exported with curves that were rounded in between, so what a first run writes and what a later
        # one writes may differ: both are whole.
        self.forms = collections.defaultdict(set)
        for name, data in (item for state in self.states for item in state.items()):
            self.forms[name].add(data)
        self.known_texts = {line for state in self.states[1:] for line in state[LOG].split(b"\r\n")}
        self.known_records = {record for state in self.states[1:] for name in COMMON for record in whole.fasta(state[name])}
        self.known_entries = {entry for state in self.states[1:] for entry in entries_of(state)}

    def cases(self, kinds):
        for which, run in zip(ROUNDS, self.runs):
            for kind in kinds:
                yield from (Case(which, kind, number) for number in range(1, run.counts[CLASSES[kind]] + 1))

    def try_case(self, case, keep=None):
        """The call that was struck by `case`, and what is wrong after it. Shows the run and keeps its files if asked to."""
        # Where a path lies decides how many allocations it takes, so all folders have names of one length.
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.folder)) / "w"
        try:
            copy_tree(self.folder / ("start" if case.round == "cold" else "once"), folder)
            run, judge = run_program(folder, self.shim, case), Judge(self, case)
            after = look(folder)
            judge.judge(run, after)
            if keep:
                print("exit code %s, struck: %s\n%s%s" % (run.code, run.struck, run.output, run.errors))
                shutil.copytree(folder, keep, dirs_exist_ok=True)
            if after != judge.wanted:  # from the state of the undisturbed run every later one goes on as known
                later = run_program(folder, self.shim)
                judge.judge_later(later, look(folder), after)
            if run.struck is None:
                judge.note("nothing was struck")
            return case, run.struck, judge.found
        finally:
            shutil.rmtree(folder.parent)


class Judge:
    """Finds what is wrong after one disturbed run and the undisturbed one that follows."""

    def __init__(self, bench, case):
        self.bench, self.case, first = bench, case, ROUNDS.index(case.round)
        self.before, self.wanted, self.wanted_later = bench.states[first : first + 3]
        self.undisturbed, self.undisturbed_later = bench.runs[first : first + 2]
        self.killed, self.is_later, self.found = case.kind in ("kill", "half"), False, []

    def note(self, kind, detail=""):
        self.found.append(("the next run: " if self.is_later else "") + "%s: %s" % (kind, steady_name(detail)))

    # --- After the disturbed run

    def judge(self, run, after):
        if run.code is None:
            self.note("hang")
        elif run.code not in (0, 1) and not (self.killed and run.code == -signal.SIGKILL):
            self.note("crash", signal.Signals(-run.code).name if run.code < 0 else "exit code %d" % run.code)
        elif run.code == 1 and "\tLoading" in run.output:
            self.note("the run is given up", run.errors.strip().split("\n")[-1])
        log = (after.get(LOG) or b"").removeprefix(self.before.get(LOG, b"")).decode("latin-1")
        self.failed = self.failed_samples(run.output + log, run.errors)
        self.lacks_tags = TAG_IS_MISSING in run.output
        self.unread = {name for name in self.bench.samples if name + ".rsd cannot be read" in run.errors}
        self.lacks_matrix = re.search(r"warning: .*dyeMethod1[.]ini (cannot be read|is looked for)", run.errors)
        self.judge_files(after)
        self.judge_former(after)
        self.judge_claims(log, after)
        if not self.killed and run.code == 0:
            self.judge_reports(run, after, log)

    def failed_samples(self, log, errors):
        """The samples with which something has failed as far as the log and the warnings report it."""
        warnings = [line for line in errors.split("\n") if FAILURE.search(line)]
        if any("basecall.log" in line for line in warnings):
            return set(self.bench.samples)  # what the log could not take is not known
        failed = {name for name in self.bench.samples if any(name in line for line in warnings)}
        return failed | {part.split(".rsd ")[0] for part in log.split("\tLoading ")[1:] if FAILURE.search(part)}

    def judge_files(self, after):
        for name, data in after.items():
            final = name in self.bench.forms or name in [OUTPUT + sample + ".fsd" for sample in self.bench.called]
            if name in self.bench.states[0]:
                if data != self.bench.states[0][name]:
                    self.note("an input file is changed", name)
            elif data is None:
                self.note("not a file", name)
            elif not final:
                if not self.killed or self.is_later:
                    self.note("something else is left behind", name)
            elif data not in self.bench.forms[name]:
                try:
                    self.judge_content(name, data)
                except (whole.Torn, IndexError, struct.error) as torn:
                    if not (self.case.kind == "half" and name in [LOG] + COMMON):
                        self.note("a file is torn", "%s: %s" % (name, torn))

    def judge_content(self, name, data):
        """A file that no undisturbed run writes."""
        if name == LOG:
            whole.demand(not data or data.endswith(b"\n"), "the end is missing")
            for line in data.decode("latin-1").split("\r\n"):
                line = re.sub("^(%s)+" % ERROR_TEXT, "", line)  # these texts have no line end
                known = line.encode("latin-1") in self.bench.known_texts or FAILURE.search(line) or KNOWN_TEXT.fullmatch(line)
                whole.demand(known, "an entry is cut: " + repr(line))
        elif name in COMMON:
            if not self.lacks_matrix and not set(whole.fasta(data)) <= self.bench.known_records:
                self.note("a file has another content", name)
        elif name == MARKUP or (name == FORMER and self.is_later):  # until then it may be half of what is to become the log
            for section, path in set(whole.markup_log(data)) - self.bench.known_entries:
                if not path.endswith(".fsd"):
                    self.note("an entry is none of the run's", "%s in %s" % (path, section))
        elif name != FORMER and not self.is_explained(name, data):
            former = name in self.before and whole.held(name, self.before[name])
            self.note("what an earlier run made is worse" if former else "a file has another content", name)

    def is_explained(self, name, data):
        """Whether a report explains why a sample's file holds something else."""
        held, stem = whole.held(name, data), pathlib.PurePath(name).stem
        is_abd, is_text = name.endswith(".abd"), name.endswith(".txt")
        if self.lacks_matrix or (stem in self.unread and (is_abd or is_text or stem not in self.bench.called)):
            return True  # no matrix for the calls, or no raw curves to show
        if name.endswith(".fsd"):
            return held == 0 and (stem in self.failed or self.is_later)
        if stem not in self.failed or self.is_later:
            return False
        # The failed form, unless there was a better one; the table without a word of the results; all tags but one.
        is_failed_form = not held and not (name in self.before and whole.held(name, self.before[name]))
        return is_failed_form or (is_text and held == whole.held(name, self.wanted[name])) or (is_abd and self.lacks_tags)

    def judge_former(self, after):
        for name, data in self.before.items():
            if name not in after:
                # A storing that fails takes with it what stood there.
                if name != FORMER and not (name.endswith((".esd", ".fsd")) and pathlib.PurePath(name).stem in self.failed):
                    self.note("what an earlier run made is gone", name)
            elif name in [LOG] + COMMON and not after[name].startswith(data):
                self.note("what an earlier run made is gone", "entries of " + name)
        if entries_of(after) and entries_of(self.before) - entries_of(after):
            self.note("what an earlier run made is gone", "entries of " + MARKUP)

    def judge_claims(self, log, after):
        """What this run's logs say has been made."""
        claims, sample, records = [], None, 0
        for line in log.split("\r\n")[:-1]:
            if line.startswith("\tLoading "):
                sample = line.split()[1].removesuffix(".rsd")
            if stored := re.search(r"proc\. file name: (\S+)\)|The processed file (\S+) already", line):
                claims.append(stored[1] or stored[2])
            elif line == "exported to ABD file format " and sample:
                claims.append(OUTPUT + "ABD/%s.abd" % sample)
            elif line.startswith("exported to SCF file format "):
                claims.append(line.split()[-1])
            records += line.endswith("exported to FASTA file format ")
        # A text dump that cannot be made counts as done.
        claims += [name for section, name in entries_of(after) - entries_of(self.before) if section != "txt"]
        made = sum(OUTPUT + "FASTA/%s.seq" % sample in after for sample in self.bench.called) + sum(
            (after.get(name) or b"").count(b">") - self.before.get(name, b"").count(b">") for name in COMMON)
        for name in [claim for claim in claims if claim not in after] + ["a FASTA record"] * (records > made):
            self.note("reported as made but not there", name)

    def judge_reports(self, run, after, log):
        """What the undisturbed run has and this one lacks must be reported."""
        def failures_in(one, since):
            lines = (one.output + one.errors + since).replace("\r", "").split("\n")
            return collections.Counter(line for line in lines if FAILURE.search(line))

        def lines_of(state):  # a sample may be called again instead of found
            lines = re.sub(rb"(The processed file \S+ already exists|skipped out/\S+)[.]?\r\n", b"", state.get(LOG) or b"")
            return collections.Counter(lines.split(b"\r\n"))

        lines = {LOG: lines_of, MARKUP: entries_of}
        missing = [name for name in self.wanted if name != FORMER and name not in lines
                   and after.get(name) not in (self.bench.forms[name] if name not in COMMON else [self.wanted[name]])
                   and name not in [OUTPUT + sample + ".fsd" for sample in self.failed]]  # the logs report these
        missing += [name for name, of in lines.items() if of(self.wanted) - of(after) and (name == LOG or of(after))]
        usual = self.wanted[LOG].removeprefix(self.before.get(LOG, b"")).decode("latin-1")
        if missing and not failures_in(run, log) - failures_in(self.undisturbed, usual):
            self.note("a loss is not reported", ", ".join(missing[:3]))

    # --- After the undisturbed run that follows

    def judge_later(self, run, after, between):
        self.is_later = True
        if run.code != 0 or run.errors != self.undisturbed_later.errors:
            self.note("not content", "exit code %s, %s" % (run.code, run.errors.split("\n")[0]))
        self.judge_files(after)
        missing = [name for name in self.wanted_later if name not in after]
        missing += ["the record of %s in %s" % (sample, name) for name in COMMON for sample in self.bench.called
                    if b">%s%s.esd\t" % (OUTPUT.encode(), sample.encode()) not in (after.get(name) or b"")]
        for name in missing:
            self.note("does not complete", name)
        added = entries_of(self.bench.states[2]) - entries_of(self.bench.states[1])
        if entries_of(between) + added - entries_of(after):
            self.note("loses entries", MARKUP)
        if not (after.get(LOG) or b"").startswith(between.get(LOG) or b""):
            self.note("loses entries", LOG)


def start_worker(bench):
    try_in_worker.bench = bench


def try_in_worker(case):
    return try_in_worker.bench.try_case(case)


def spread(cases, count):
    """Some `count` of the cases: of each round and kind as many, evenly over its numbers, which differ from kind to kind."""
    groups, chosen = collections.defaultdict(list), []
    for case in cases:
        groups[case[:2]].append(case)
    for i, group in enumerate(groups.values()):
        share = min(len(group), -(-count // len(groups)))
        chosen += [group[(k * len(group) + i * len(group) // len(groups)) // share] for k in range(share)]
    return chosen


def print_results(results, command):
    """The violations, with the cases and calls that lead to each and how to see one of them; then the counts."""
    groups = collections.defaultdict(list)
    for case, struck, found in sorted(results, key=lambda result: result[0]):
        for text in dict.fromkeys(found):
            groups[re.sub(r"run1A0\d", "SAMPLE", text)].append((case, re.sub(r"run1A0\d", "SAMPLE", str(struck))))
    for text, hits in sorted(groups.items()):
        print("%6d  %s" % (len(hits), text))
        for key in (lambda hit: "%s %s" % hit[0][:2]), (lambda hit: hit[1]):
            print("        " + ", ".join("%s (%d)" % item for item in collections.Counter(map(key, hits)).most_common(6)))
        print("        %s --one %s %s %d" % (command, *hits[0][0]))
    tried = collections.Counter(result[0][:2] for result in results)
    broken = collections.Counter(result[0][:2] for result in results if result[2])
    for group in sorted(tried):
        print("%-6s %-8s %6d tried, %6d with a violation" % (*group, tried[group], broken[group]))
    print("%d cases, %d of them with a violation" % (tried.total(), broken.total()))


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("samplegen", type=pathlib.Path)
    parser.add_argument("shim", type=pathlib.Path)
    parser.add_argument("--tools", type=pathlib.Path, metavar="LANETOOLS", help="run the subcommands of this program")
    parser.add_argument("--spread", type=int, help="only about so many cases, evenly over all")
    parser.add_argument("--kinds", help="only these kinds, with commas between them")
    parser.add_argument("--one", nargs=3, metavar=("ROUND", "KIND", "N"), help="one case; shows what the program prints")
    parser.add_argument("--keep", type=pathlib.Path, help="with --one: where the files stay")
    parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count())
    given = parser.parse_args()
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix="lanewright-break", dir=memory) as folder:
        program = [given.program.resolve(), given.samplegen.resolve(), given.shim.resolve()]
        if given.tools:
            bench, kinds = tools.Bench(pathlib.Path(folder), given.tools.resolve(), *program), tools.KINDS
        else:
            bench, kinds = Bench(pathlib.Path(folder), *program), list(CLASSES)
        if given.one:
            case = Case(given.one[0], given.one[1], int(given.one[2]))
            results = [bench.try_case(case, given.keep.resolve() if given.keep else bench.folder / "kept")]
        else:
            cases = list(bench.cases(given.kinds.split(",") if given.kinds else kinds))
            with multiprocessing.Pool(given.jobs, start_worker, (bench,)) as pool:
                results = list(pool.imap_unordered(try_in_worker, spread(cases, given.spread) if given.spread else cases, 8))
        print_results(results, "scripts/break lanetools" if given.tools else "scripts/break")
        return 1 if any(found for _, _, found in results) else 0


if __name__ == "__main__":
    sys.exit(main())
