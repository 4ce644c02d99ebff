# SPDX-License-Identifier: MIT
"""Runs lanetools over a small plate in which one call fails, and judges the result.

It must not abort or change its input. Files with a final name must be complete, and no other files may remain. The exit code is 0
only if everything was done; otherwise there is a reason on standard error (import prints one per source on standard output). The
same command, run again without a failing call, must complete everything."""

import gzip
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile

import shimmed
import whole

ROUNDS = {"import": "source -o made", "run": "plate -o made -j 1 -- -BC lanecall.so -ABD -FA",
          "summary": "results --raw plate -o made.tsv", "export": "results -o made --format fastq --per plate --gzip",
          "bam": "results -o made --format bam", "report": "results --raw plate -o made.html"}
KINDS = ["EIO", "ENOSPC", "kill", "half", "memory"]
BAM_END = bytes.fromhex("1f8b08040000000000ff0600424302001b0003000000000000000000")


def look(folder):
    """Bytes of the files by path without the programs, logs without their times, and everything without the folder's path,
    which has always the same length."""
    own = str(folder).encode()
    state = {str(path.relative_to(folder)): path.read_bytes().replace(own, b"." * len(own)) for path in folder.rglob("*")
             if path.is_file() and not str(path.relative_to(folder)).startswith(("bin/l", "bin/Base"))}
    for name in state:
        if name.endswith(".log"):
            state[name] = re.sub(rb"(\tLoading \S+  \S+  )[^\r]*", rb"\1TIME", state[name])
    return state


def demand_whole(name, data):
    """Raises whole.Torn or an error of the format."""
    if name.endswith((".gz", ".bam")):
        gzip.decompress(data)
        whole.demand(name.endswith(".gz") or data.endswith(BAM_END), "the end is missing")
    elif name.endswith(".html"):
        whole.demand(data.rstrip().endswith(b"</html>"), "the end is missing")
    elif name.endswith(".tsv"):
        rows = data.split(b"\n")
        whole.demand(not rows[-1] and len({row.count(b"\t") for row in rows[:-1]}) == 1, "a row is cut")
    elif name.endswith(".rsd"):
        whole.demand_checksum(data)
    elif name.endswith((".esd", ".fsd", ".abd", ".seq")):
        whole.held(name, data)


class Bench:
    def __init__(self, folder, lanetools, program, samplegen, shim):
        self.folder, self.shim = folder, shim
        shimmed.demand_known_calls(lanetools, shim)
        start = folder / "start"
        names = ["lanewright", "lanetools", "lanecall.so", "basecall.ini", "registry.ini", "dyeMethod1.ini"]
        shutil.copytree(program.parent, start / "bin", ignore=lambda _, found: set(found) - set(names))
        subprocess.run([samplegen, "plate", "--plate", "run1", "--wells", "2", "--bases", "60", "--seed", "20"], cwd=start,
                       check=True, stdout=subprocess.DEVNULL)
        (start / "results").mkdir()
        environment = {"QUILLION_REGISTRY": "bin/registry.ini"}
        subprocess.run("bin/lanewright -IP plate -OD results -BC -ABD".split(), cwd=start, env=environment, check=True,
                       stdout=subprocess.DEVNULL)
        for name in ("basecall.log", "log.xml", "log.xml.temp"):
            (start / "plate" / name).unlink(missing_ok=True)
        (start / "source").mkdir()
        for exported in start.glob("results/*/ABD/*.abd"):
            exported.rename(start / "source" / (exported.stem + ".ab1"))
        self.before, self.wanted, self.runs, self.later = look(start), {}, {}, {}
        helps = subprocess.run([lanetools, "--help"], check=True, capture_output=True, text=True).stdout
        self.rounds = [name for name in ROUNDS if name == "bam" or "\n  %s " % name in helps]
        for name in self.rounds:
            copy = self.copy()
            run = self.runs[name] = self.run(copy, name)
            self.wanted[name] = look(copy)
            if run.code != 0 or self.wanted[name].keys() == self.before.keys():
                raise SystemExit("the undisturbed %s fails: %s" % (name, run))
            # What a later run makes of stored samples may differ, since their curves were rounded in between.
            self.run(copy, name)
            self.later[name] = look(copy)
            shutil.rmtree(copy.parent)

    def copy(self):
        """A folder to run in; the programs are shared."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.folder)) / "w"
        shutil.copytree(self.folder / "start", folder, copy_function=lambda a, b: (
            pathlib.Path(b).hardlink_to(a) if "/bin/l" in str(a) else shutil.copyfile(a, b)))
        return folder

    def run(self, folder, name, case=None):
        words = ["bin/lanetools", "export" if name == "bam" else name] + ROUNDS[name].split()
        return shimmed.run(words, folder, self.shim, case, {"TMPDIR": str(folder.parent)}.items())

    def cases(self, kinds):
        for name in self.rounds:
            for kind in kinds:
                counts = self.runs[name].counts
                yield from (shimmed.Case(name, kind, n) for n in range(1, counts[shimmed.CLASSES[kind]] + 1))

    def try_case(self, case, keep=None):
        folder = self.copy()
        try:
            run = self.run(folder, case.round, case)
            after = look(folder)
            found = list(self.judge(case, run, after))
            if keep:
                print("exit code %s, struck: %s\n%s%s" % (run.code, run.struck, run.output, run.errors))
                shutil.copytree(folder, keep, dirs_exist_ok=True)
            if after != self.wanted[case.round]:
                later = self.run(folder, case.round)
                if later.code != 0:
                    found.append("the next run: exit code %s: %s" % (later.code, later.errors.strip().split("\n")[-1]))
                found += ["the next run: " + text for text in self.judge_files(case, look(folder), True, True)]
            return case, run.struck, found
        finally:
            shutil.rmtree(folder.parent)

    def judge(self, case, run, after):
        wasKilled = run.code == -signal.SIGKILL and case.kind in ("kill", "half")
        if run.code is None:
            yield "hang"
        elif run.code not in (0, 1, 2, 3) and not wasKilled:
            yield "crash: " + (signal.Signals(-run.code).name if run.code < 0 else "exit code %d" % run.code)
        if run.code in (1, 2, 3):
            hasReason = run.errors.strip() or (case.round == "import" and "\t-\t" in run.output)
            if not hasReason:
                yield "exit code %d without a reason" % run.code
            if "std::bad_alloc" in run.errors + run.output:
                yield "a reason that is no sentence"
        if run.code == 0 and run.output != self.runs[case.round].output:
            yield "exit code 0 with another output"
        yield from self.judge_files(case, after, run.code == 0, not wasKilled, run.struck)

    def judge_files(self, case, after, isDone, isOrderly, struck=None):
        wanted = self.wanted[case.round]
        for name, data in self.before.items():
            if after.get(name) != data:
                yield "an input file is changed: " + name
        for name, data in after.items():
            if name in self.before or data in (wanted.get(name), self.later[case.round].get(name)):
                continue
            isTemporary = pathlib.PurePath(name).name.startswith(".lw")
            if isTemporary:
                if isOrderly and not str(struck).startswith("unlink"):
                    yield "left behind: " + shimmed.steady_name(name)
            elif isDone and not name.endswith((".log", ".xml", ".temp")):
                yield "exit code 0 with another content: " + name
            elif name not in wanted and not (case.round == "run" and name.endswith((".fsd", ".temp"))):
                yield "something else is made: " + name
            try:
                if not isTemporary:
                    demand_whole(name, data)
            except Exception as torn:
                yield "torn: %s: %s" % (name, torn)
        if isDone:
            yield from ("exit code 0 without " + name for name in wanted if name not in after and not name.endswith(".temp"))
