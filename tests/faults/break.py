#!/usr/bin/env python3
"""Runs the program over a small plate with every export again and again, each time with one call that goes wrong, and
looks at what it made of that.

usage: break.py [options] PROGRAM SAMPLEGEN SHIM

PROGRAM lies in an installation with a base caller. What goes wrong, and in which run:

    cold            nothing has been called yet
    second          everything has been called and exported before
    EIO ENOSPC EMFILE ENOMEM EINTR EACCES    the N-th system call fails with this
    kill            the process is killed before the N-th system call
    half            the N-th system call writes half of its bytes, then the process is killed
    short           the N-th system call reads or writes half of its bytes
    memory          the N-th allocation fails
    ENOSPC+ EMFILE+ memory+    all from the N-th on fail: a full disk, no descriptors, no memory

What must hold after it:

    raw files and settings are unchanged; a file under a final name is whole: that of an undisturbed run or, where the log
    reports a failure, a failed form; what an earlier run had made is still there; what is reported as made is there; what
    is missing is reported; once a sample has been loaded the run goes on to its end; the logs hold whole entries; a process
    that was not killed leaves nothing else; and an undisturbed run afterwards completes everything, reports nothing odd and
    leaves nothing else either.

A half write is not held against basecall.log and common FASTA files, to which one write adds: the system completes it.
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

import whole

ERRORS = ["EIO", "ENOSPC", "EMFILE", "ENOMEM", "EINTR", "EACCES"]
KINDS = ERRORS + ["kill", "half", "short", "memory", "ENOSPC+", "EMFILE+", "memory+"]
ROUNDS = ["cold", "second"]
SWITCHES = "-IP plate -OD out -BC -ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT".split()
OUTPUT = "out/plate_LC1_QX1/"
PLATE_FASTA, RUN_FASTA = OUTPUT + "FASTA/plate_LC1_QX1.seq", "out/out.seq"
LOG, MARKUP = "plate/basecall.log", "plate/log.xml"
APPENDED = [LOG, PLATE_FASTA, RUN_FASTA]
SECONDS_PER_RUN = 60
REPORT_SIZE = 1012
TAG_IS_MISSING = "The SafeArray Allocation Failed"  # and the ABD file goes without that tag
ERROR_TEXT = "|".join([os.strerror(getattr(errno, name)) for name in ERRORS + ["ENOENT"]] + ["Not enough storage[^.]*[.]", "Unspecified error"])
FAILURE = re.compile(
    r"failed to|[Cc]annot |Access is denied|warning: |Fatal Error|doesn't exist|not listed|Syntax error|not enough disk space"
    r"|skipped (?!out/)|skipped \.|The base order is not specified|" + TAG_IS_MISSING + "|" + ERROR_TEXT
)
# Names of system calls that the shim has to know if the program uses them.
CALL = re.compile(r"(?!_|dl|clock|pthread)\w*(open|creat|read|write|stat|link|name|sync|trunc|dir|chmod|chown|lock|dup|mmap|file"
                  r"|access|utime|pipe|fcntl|seek|close|tmp)\w*")

Case = collections.namedtuple("Case", "round kind number")
Run = collections.namedtuple("Run", "code output errors struck strikes")
State = dict  # bytes of the files below a folder by path; None for what is no regular file


def texts_of(log):
    """A plain log without its times."""
    return re.sub(rb"(\tLoading \S+  \S+  )[^\r]*", rb"\1TIME", log)


def look(folder):
    state = State()
    for path in sorted(folder.rglob("*")):
        name = str(path.relative_to(folder))
        if name.startswith("bin/") and not name.startswith("bin/.") or (path.is_dir() and not path.is_symlink()):
            continue
        state[name] = path.read_bytes() if path.is_file() and not path.is_symlink() else None
    if state.get(LOG):
        state[LOG] = texts_of(state[LOG])
    return state


def failures_in(run, log):
    text = run.output + run.errors + log.decode("latin-1")
    return collections.Counter(line for line in text.replace("\r", "").split("\n") if FAILURE.search(line))


def run_program(folder, shim=None, case=None, trace=None):
    environment = {"PATH": os.environ["PATH"], "QUILLION_REGISTRY": "bin/registry.ini", "TZ": "UTC"}
    environment["ASAN_OPTIONS"] = environment["UBSAN_OPTIONS"] = "verify_asan_link_order=0:exitcode=99"
    report = folder.parent / (folder.name + ".report")
    if shim:
        report.write_bytes(bytes(REPORT_SIZE))
        environment.update(LD_PRELOAD=str(shim), FAULT_REPORT=str(report))
        if trace:
            environment["FAULT_TRACE"] = str(trace)
    if case:
        kind = case.kind.rstrip("+")
        environment["FAULT_ALLOCATION" if kind == "memory" else "FAULT_CALL"] = str(case.number)
        environment["FAULT_KIND"] = str(getattr(errno, kind)) if kind in ERRORS else kind
        if case.kind.endswith("+"):
            environment["FAULT_LASTING"] = "1"
    try:
        done = subprocess.run(
            ["bin/lanewright"] + SWITCHES, cwd=folder, env=environment, stdin=subprocess.DEVNULL, capture_output=True,
            timeout=SECONDS_PER_RUN,
        )
        code, output, errors = done.returncode, done.stdout, done.stderr
    except subprocess.TimeoutExpired as late:
        code, output, errors = None, late.stdout or b"", late.stderr or b""
    struck, strikes, counts = "", 0, (0, 0)
    if shim:
        data = report.read_bytes()
        *counts, strikes = struct.unpack_from("<III", data)
        struck = data[12 + 500 :].split(b"\0")[0].decode("latin-1").replace(str(folder) + "/", "").replace(str(folder), ".")
        report.unlink()
    run = Run(code, output.decode("latin-1"), errors.decode("latin-1"), steady_name(struck), strikes)
    return (run, counts) if trace else run


def steady_name(text):
    """The text without the part of a temporary name that differs from run to run."""
    return re.sub(r"(\.lw)[^/ ]*", r"\1*", text)


def copy_tree(source, target):
    """A copy of a template; the programs are shared, the rest is not."""
    share = {"lanewright", "lanecall.so"}
    shutil.copytree(source, target, copy_function=lambda a, b: (os.link if os.path.basename(a) in share else shutil.copyfile)(a, b))


class Bench:
    """The plate before and after undisturbed runs, and what those runs said."""

    def __init__(self, folder, program, samplegen, shim):
        self.folder, self.shim = folder, shim
        unknown = self.symbols("--undefined-only", program) - self.symbols("--defined-only", shim)
        if unknown:
            raise SystemExit("the shim does not know these calls: " + " ".join(sorted(unknown)))
        start = folder / "start"
        shutil.copytree(program.parent, start / "bin", ignore=lambda _, names: [n for n in names if not self.is_installed(n)])
        subprocess.run([samplegen, "plate", "--plate", "run1", "--wells", "3", "--failed", "1", "--bases", "60", "--seed", "20"],
                       cwd=start, check=True, stdout=subprocess.DEVNULL)
        # A separation matrix that matters, so that a run without it has another result.
        shutil.copyfile(start / "plate/dyeMethod1.ini", start / "bin/dyeMethod1.ini")
        (start / "out").mkdir()
        self.states, self.runs, self.calls, self.allocations = [look(start)], [], {}, {}
        folders = [start, folder / "once", folder / "twice", folder / "thrice"]
        for before, after in zip(folders, folders[1:]):
            copy_tree(before, after)
            trace = folder / (after.name + ".trace")
            run, counts = run_program(after, shim, None, trace)
            if run.code != 0 or run.errors:
                raise SystemExit("the undisturbed run fails: " + run.output + run.errors)
            self.runs.append(run)
            self.states.append(look(after))
            self.calls[after.name] = [line[:3] for line in trace.read_text("latin-1").splitlines()]
            self.allocations[after.name] = counts[1]
        # A sample read again from its stored form is exported with curves that were rounded in between, so what a first run
        # writes and what a later one writes may differ: both are whole.
        self.forms = collections.defaultdict(set)
        for state in self.states[1:]:
            for name, data in state.items():
                self.forms[name].add(data)
        self.samples = [name[len("plate/") : -4] for name in self.states[0] if name.endswith(".rsd")]
        self.called = [name for name in self.samples if OUTPUT + name + ".esd" in self.states[1]]
        if len(self.samples) != 3 or len(self.called) != 2:
            raise SystemExit("the plate is not what the cases are made for")

    @staticmethod
    def symbols(which, path):
        """The exported or needed names that look like system calls."""
        listing = subprocess.run(["nm", "-D", which, path], check=True, capture_output=True, text=True).stdout
        return {name for name in (line.split()[-1].split("@")[0] for line in listing.splitlines()) if CALL.fullmatch(name)}

    @staticmethod
    def is_installed(name):
        return name in ("lanewright", "lanecall.so", "basecall.ini", "registry.ini", "dyeMethod1.ini")

    def before(self, case):
        return ROUNDS.index(case.round)

    def cases(self, kinds):
        for which, name in enumerate(("once", "twice")):
            for kind in kinds:
                if kind.startswith("memory"):
                    numbers = range(1, self.allocations[name] + 1)
                else:
                    numbers = [n for n, flags in enumerate(self.calls[name], 1) if self.matters(kind, flags)]
                yield from (Case(ROUNDS[which], kind, number) for number in numbers)

    @staticmethod
    def matters(kind, flags):
        """Whether `kind` does something at a call that grows files, takes a descriptor, moves bytes (or not)."""
        grows, opens, moves = (flag == "1" for flag in flags)
        return {"half": grows and moves, "short": moves, "ENOSPC+": grows, "EMFILE+": opens}.get(kind, True)


class Judge:
    """Finds what is wrong after one disturbed run and the undisturbed one that follows."""

    def __init__(self, bench, case):
        self.bench, self.case = bench, case
        first = bench.before(case)
        self.before, self.wanted, self.wanted_later = bench.states[first : first + 3]
        self.undisturbed, self.undisturbed_later = bench.runs[first : first + 2]
        self.killed = case.kind in ("kill", "half")
        self.is_later = False
        self.found = []

    def note(self, kind, detail=""):
        self.found.append((kind, steady_name(detail)))

    def log_since(self, log, former):
        return log[len(former) :] if log.startswith(former) else log

    # --- After the disturbed run

    def judge(self, run, after):
        if run.code is None:
            self.note("hang")
        elif run.code not in (0, 1) and not (self.killed and run.code == -signal.SIGKILL):
            self.note("crash", signal.Signals(-run.code).name if run.code < 0 else "exit code %d" % run.code)
        elif run.code == 1 and "\tLoading" in run.output:
            self.note("the run is given up", run.errors.strip().split("\n")[-1])
        log = self.log_since(after.get(LOG) or b"", self.before.get(LOG, b""))
        self.failed = self.failed_samples(run.output + log.decode("latin-1"), run.errors)
        self.lacks_tags = TAG_IS_MISSING in run.output
        self.unread = {name for name in self.bench.samples if name + ".rsd cannot be read" in run.errors}
        self.lacks_matrix = re.search(r"warning: .*dyeMethod1[.]ini (cannot be read|is looked for)", run.errors)
        for name, data in after.items():
            self.judge_file(name, data, self.wanted)
        for name in self.before:
            self.judge_former(name, after)
        self.judge_claims(log.decode("latin-1"), after)
        if not self.killed:
            self.judge_reports(run, after, log)

    def failed_samples(self, log, errors):
        """The samples with which something has failed as far as the log and the warnings say."""
        warnings = [line for line in errors.split("\n") if FAILURE.search(line)]
        if any("basecall.log" in line for line in warnings):
            return set(self.bench.samples)  # what the log could not take is not known
        failed = {name for name in self.bench.samples if any(name in line for line in warnings)}
        for section in log.split("\tLoading ")[1:]:
            if FAILURE.search(section):
                failed.add(section.split(".rsd ")[0])
        return failed

    def judge_file(self, name, data, wanted):
        if name in self.bench.states[0]:
            if data != self.bench.states[0][name]:
                self.note("an input file is changed", name)
        elif data is None:
            self.note("not a file", name)
        elif not self.is_final(name):
            if not self.killed or self.is_later:
                self.note("something else is left behind", name)
        elif data not in self.bench.forms[name]:
            try:
                self.judge_other(name, data, wanted)
            except (whole.Torn, IndexError, struct.error) as torn:
                if not (self.case.kind == "half" and name in APPENDED):
                    self.note("a file is torn", "%s: %s" % (name, torn))

    def is_final(self, name):
        return name in self.wanted_later or any(name == OUTPUT + sample + ".fsd" for sample in self.bench.called)

    def judge_other(self, name, data, wanted):
        """A file that is not that of the undisturbed run."""
        stem = pathlib.PurePath(name).stem
        if name == LOG:
            self.judge_texts(data)
        elif name == MARKUP or (name == MARKUP + ".temp" and self.is_later):
            self.judge_entries(whole.markup_log(data), wanted)
        elif name in (PLATE_FASTA, RUN_FASTA):
            for record in whole.fasta(data):
                if record not in whole.fasta(self.wanted[name]) and not self.lacks_matrix:
                    self.note("a file has another content", name)
        elif name == MARKUP + ".temp":
            pass  # half of what is to become the log; after the next run it is looked at
        elif not self.is_failed_form(name, data, stem):
            self.judge_content(name, data, wanted)

    def is_failed_form(self, name, data, stem):
        """Whether the file is what a sample leaves that could not be read, called or stored, and this has been reported."""
        if name.endswith(".fsd"):
            return whole.sample(data) == 1 and (stem in self.failed or self.is_later)
        if stem not in self.failed or self.is_later:
            return False
        if name.endswith(".abd"):
            return whole.abif(data) == 0 or self.lacks_tags
        if name.endswith(".scf"):
            return whole.scf(data) == 0
        return name.startswith("plate/Text/") and self.table_of(data) in (b"", self.table_of(self.wanted[name]))

    @staticmethod
    def table_of(dump):
        """The numbers of a text dump; the lines ahead of them tell what has become of the sample."""
        head, heading, table = dump.partition(b"\t Current\r\n\r\n")
        if not heading:
            raise whole.Torn("there is no heading")
        return table

    def judge_content(self, name, data, wanted):
        readers = {".esd": whole.sample, ".fsd": whole.sample, ".abd": whole.abif, ".scf": whole.scf, ".seq": whole.fasta}
        reader = readers.get(pathlib.PurePath(name).suffix)
        if reader:
            reader(data)
        elif (wanted.get(name) or b"").startswith(data):
            raise whole.Torn("the end is missing")
        if not self.is_explained(name):
            self.note("a file has another content", name)

    def is_explained(self, name):
        """Whether a warning tells why the file is another one: no matrix for the calls, no raw curves for the sample."""
        stem = pathlib.PurePath(name).stem
        shows_raw = name.endswith(".abd") or name.startswith("plate/Text/") or stem not in self.bench.called
        return bool(self.lacks_matrix) or (stem in self.unread and shows_raw)

    def judge_texts(self, data):
        known = set((self.wanted_later[LOG] + self.wanted[LOG]).split(b"\r\n"))
        text = data.decode("latin-1")
        if text and not text.endswith("\n"):
            raise whole.Torn("the end is missing")
        for line in text.split("\r\n"):
            line = re.sub("^(%s)+" % ERROR_TEXT, "", line)  # these texts have no line end
            if line.encode("latin-1") not in known and not FAILURE.search(line) and not self.is_known_text(line):
                raise whole.Torn("an entry is cut: " + repr(line))

    @staticmethod
    def is_known_text(line):
        return re.fullmatch(
            r"(successfully basecalled|exported to SCF file format|The processed file|skipped) .*(\.so|\.scf|exists\.|\.esd)"
            r"|Using base order [A-Z]{4}\. ", line)

    def judge_entries(self, entries, wanted):
        known = set(whole.markup_log(wanted[MARKUP])) | set(whole.markup_log(self.wanted[MARKUP]))
        for entry in set(entries) - known:
            if not entry[1].endswith(".fsd"):
                self.note("an entry is none of the run's", "%s in %s" % entry[::-1])

    def judge_former(self, name, after):
        stem = pathlib.PurePath(name).stem
        if name not in after:
            # A storing that fails takes with it what stood there.
            if name != MARKUP + ".temp" and not (name.endswith((".esd", ".fsd")) and stem in self.failed):
                self.note("what an earlier run made is gone", name)
        elif name in APPENDED:
            if not after[name].startswith(self.before[name]):
                self.note("what an earlier run made is gone", "entries of " + name)
        elif name == MARKUP:
            try:
                lost = collections.Counter(whole.markup_log(self.before[name])) - collections.Counter(whole.markup_log(after[name]))
            except whole.Torn:
                return  # has been noted
            if lost:
                self.note("what an earlier run made is gone", "entries of " + name)
        elif name != MARKUP + ".temp" and after[name] not in self.bench.forms[name]:
            if not self.is_as_good(name, after[name]):
                self.note("what an earlier run made is worse", name)

    def is_as_good(self, name, data):
        """Whether it tells no less than before, or what it lacks has been reported."""
        if self.is_explained(name):
            return True
        try:
            if name.startswith("plate/Text/"):
                return self.table_of(data) == self.table_of(self.before[name])
            if name.endswith(".abd"):
                return self.lacks_tags and whole.abif(data) == whole.abif(self.before[name])
            return name.endswith(".fsd") and whole.sample(data) == 1
        except whole.Torn:
            return True  # has been noted

    def judge_claims(self, log, after):
        """What this run's logs say has been made."""
        def claim(text, name):
            if name not in after:
                self.note("reported as made but not there", "%s: %s" % (text, name))

        sample, fasta = None, 0
        for line in log.split("\r\n")[:-1]:
            if line.startswith("\tLoading "):
                sample = line.split()[1][: -len(".rsd")]
            stored = re.search(r"proc\. file name: (\S+)\)|The processed file (\S+) already", line)
            if stored:
                claim("stored", stored[1] or stored[2])
            elif line == "exported to ABD file format " and sample:
                claim("exported", OUTPUT + "ABD/%s.abd" % sample)
            elif line.startswith("exported to SCF file format "):
                claim("exported", line.split()[-1])
            fasta += line.endswith("exported to FASTA file format ")
        if fasta > self.fasta_records(after):
            self.note("reported as made but not there", "FASTA records")
        try:
            entries = collections.Counter(whole.markup_log(after.get(MARKUP) or b""))
        except whole.Torn:
            return
        for section, name in entries - collections.Counter(whole.markup_log(self.before.get(MARKUP, b""))):
            if section != "txt":  # a text dump that cannot be made counts as done
                claim("entered in log.xml", name)

    def fasta_records(self, after):
        """How many records this run has at most made."""
        own = sum(OUTPUT + "FASTA/%s.seq" % sample in after for sample in self.bench.called)
        return own + sum((after.get(name) or b"").count(b">") - self.before.get(name, b"").count(b">")
                         for name in (PLATE_FASTA, RUN_FASTA))

    def judge_reports(self, run, after, log):
        placeholders = [OUTPUT + name + ".fsd" for name in self.failed]  # the logs tell of them
        missing = [name for name in self.wanted if name not in placeholders + [MARKUP + ".temp"] and self.is_less(name, after)]
        if missing and run.code == 0 and not failures_in(run, log) - failures_in(self.undisturbed, self.log_since(
                self.wanted[LOG], self.before.get(LOG, b""))):
            self.note("a loss is not reported", ", ".join(missing[:3]) + (" and more" if len(missing) > 3 else ""))

    def is_less(self, name, after):
        wanted, data = self.wanted[name], after.get(name)
        if data == wanted or (data in self.bench.forms[name] and name not in APPENDED + [MARKUP]):
            return False
        if data is None or name not in (LOG, MARKUP):
            return True
        try:
            split = whole.markup_log if name == MARKUP else lambda text: text.split(b"\r\n")
            return bool(collections.Counter(split(wanted)) - collections.Counter(split(data)))
        except whole.Torn:
            return False  # has been noted

    # --- After the undisturbed run that follows

    def judge_later(self, run, after, between):
        self.is_later = True
        if run.code != 0:
            self.note("the next run fails", "exit code %s" % run.code)
        if run.errors != self.undisturbed_later.errors:
            self.note("the next run is not content", run.errors.split("\n")[0])
        for name in self.wanted_later:
            if name not in after:
                self.note("the next run does not complete", name)
        for name, data in after.items():
            former = [kind for kind, _ in self.found]
            self.judge_file(name, data, self.wanted_later)
            for i in range(len(former), len(self.found)):
                self.found[i] = ("the next run leaves: " + self.found[i][0], self.found[i][1])
        self.judge_later_logs(after, between)

    def judge_later_logs(self, after, between):
        if not (after.get(LOG) or b"").startswith(between.get(LOG) or b""):
            self.note("the next run loses entries", LOG)
        for name in (PLATE_FASTA, RUN_FASTA):
            for sample in self.bench.called:
                if (after.get(name) or b"").count((">%s%s.esd\t" % (OUTPUT, sample)).encode()) < 1:
                    self.note("the next run does not complete", "the record of %s in %s" % (sample, name))
        try:
            entries = collections.Counter(whole.markup_log(after.get(MARKUP) or b""))
            former = collections.Counter(whole.markup_log(between.get(MARKUP) or b""))
        except whole.Torn:
            return
        added = collections.Counter(whole.markup_log(self.bench.states[2][MARKUP])) - collections.Counter(
            whole.markup_log(self.bench.states[1][MARKUP]))
        if (former + added) - entries:
            self.note("the next run loses entries", MARKUP)


def try_case(bench, case, keep=None):
    """What is wrong after `case`, and the call that was struck. Shows the run and keeps its files if asked to."""
    # Where a path lies decides how many allocations it takes, so all folders have names of one length.
    folder = pathlib.Path(tempfile.mkdtemp(dir=bench.folder)) / "w"
    try:
        copy_tree(bench.folder / ("start" if case.round == "cold" else "once"), folder)
        run = run_program(folder, bench.shim, case)
        after = look(folder)
        judge = Judge(bench, case)
        judge.judge(run, after)
        if keep:
            print("exit code %s, struck: %s\n%s%s" % (run.code, run.struck, run.output, run.errors))
            shutil.copytree(folder, keep, dirs_exist_ok=True)
        # From the state of the undisturbed run every later one goes on as known.
        if after != judge.wanted:
            later = run_program(folder)
            judge.judge_later(later, look(folder), after)
        if run.strikes == 0:
            judge.note("nothing was struck")
        return case, run.struck, judge.found
    finally:
        shutil.rmtree(folder.parent)


def try_in_worker(case):
    return try_case(try_in_worker.bench, case)


def start_worker(bench):
    try_in_worker.bench = bench


def spread(cases, count):
    """Some `count` of the cases: of each round and kind as many, evenly over its numbers, which differ from kind to kind."""
    groups = collections.defaultdict(list)
    for case in cases:
        groups[case.round, case.kind].append(case)
    chosen = []
    for i, group in enumerate(groups.values()):
        share = min(len(group), -(-count // len(groups)))
        chosen += [group[(k * len(group) + i * len(group) // len(groups)) // share] for k in range(share)]
    return chosen


def print_table(results, command):
    """The violations by kind, with the cases and calls that lead to each and how to see one of them."""
    groups = collections.defaultdict(list)
    for case, struck, found in results:
        for kind, detail in dict.fromkeys(found):
            groups[re.sub(r"run1A0\d", "SAMPLE", "%s: %s" % (kind, detail))].append((case, struck))
    for text, hits in sorted(groups.items(), key=lambda item: (item[0].split(":")[0], -len(item[1]))):
        kinds = collections.Counter("%s %s" % hit[0][:2] for hit in hits)
        calls = collections.Counter(re.sub(r"run1A0\d", "SAMPLE", struck) for _, struck in hits)
        print("%6d  %s" % (len(hits), text))
        print("        " + ", ".join("%s %d" % item for item in sorted(kinds.items())))
        print("        at: " + ", ".join("%s (%d)" % item for item in calls.most_common(4)))
        print("        %s --one %s %s %d" % ((command,) + hits[0][0]))


def print_counts(results):
    """How many cases of each round and kind were tried, and how many of them had a violation."""
    tried = collections.Counter((case.round, case.kind) for case, _, _ in results)
    broken = collections.Counter((case.round, case.kind) for case, _, found in results if found)
    for kind in KINDS:
        if any(tried[which, kind] for which in ROUNDS):
            print("%-8s" % kind + "".join("%9s: %6d tried, %6d with a violation" % (
                which, tried[which, kind], broken[which, kind]) for which in ROUNDS))


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("samplegen", type=pathlib.Path)
    parser.add_argument("shim", type=pathlib.Path)
    parser.add_argument("--spread", type=int, help="only about so many cases, evenly over all")
    parser.add_argument("--kinds", default=",".join(KINDS), help="only these kinds, with commas between them")
    parser.add_argument("--one", nargs=3, metavar=("ROUND", "KIND", "N"), help="one case; shows what the program says")
    parser.add_argument("--keep", type=pathlib.Path, help="with --one: where the files stay")
    parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count())
    given = parser.parse_args()
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix="lanewright-break", dir=memory) as folder:
        bench = Bench(pathlib.Path(folder), given.program.resolve(), given.samplegen.resolve(), given.shim.resolve())
        if given.one:
            case = Case(given.one[0], given.one[1], int(given.one[2]))
            keep = given.keep.resolve() if given.keep else bench.folder / "kept"
            results = [try_case(bench, case, keep)]
        else:
            cases = list(bench.cases(given.kinds.split(",")))
            if given.spread:
                cases = spread(cases, given.spread)
            with multiprocessing.Pool(given.jobs, start_worker, (bench,)) as pool:
                results = list(pool.imap_unordered(try_in_worker, cases, 8))
        broken = sum(bool(found) for _, _, found in results)
        results.sort(key=lambda result: result[0])
        print_table(results, "scripts/break")
        if not given.one:
            print_counts(results)
        print("%d cases, %d of them with a violation" % (len(results), broken))
        return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main())
