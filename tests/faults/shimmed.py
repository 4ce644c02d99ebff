# SPDX-License-Identifier: MIT
"""Runs a program with the shim in front of the C library, which makes one chosen call go wrong."""

import collections
import errno
import os
import re
import struct
import subprocess

ERRORS = ["EIO", "ENOSPC", "EMFILE", "ENOMEM", "EINTR", "EACCES"]
# Each kind with the index of its class of calls in the shim's report.
CLASSES = {**dict.fromkeys(ERRORS + ["kill"], 0), "half": 4, "short": 3, "memory": 5, "ENOSPC+": 1, "EMFILE+": 2, "memory+": 5}
SECONDS_PER_RUN = 60
REPORT = struct.Struct("<7I500s500s")  # struct Report of the shim
# Names of system calls that the shim has to know if the program uses them.
CALL = re.compile(r"(?!_|dl|clock|pthread|bgzf|hts|sam_|fwrite)\w*(open|creat|read|write|stat|link|name|sync|trunc|dir|chmod|chown|lock|dup|mmap|file"
                  r"|access|utime|pipe|fcntl|seek|close|tmp)\w*")

Case = collections.namedtuple("Case", "round kind number")
Run = collections.namedtuple("Run", "code output errors counts struck")


def steady_name(text):
    """The text without the part of a temporary name that differs from run to run."""
    return re.sub(r"(\.lw)[^/ ]*", r"\1*", text)


def run(words, folder, shim, case=None, extra=()):
    """Runs `words` in the folder, with the case's call struck; `extra` variables are set too."""
    report = folder.parent / (folder.name + ".report")
    report.write_bytes(bytes(REPORT.size))
    environment = {"PATH": os.environ["PATH"], "QUILLION_REGISTRY": "bin/registry.ini", "TZ": "UTC", "LD_PRELOAD": str(shim),
                   "FAULT_REPORT": str(report), **dict(extra)}
    environment["ASAN_OPTIONS"] = environment["UBSAN_OPTIONS"] = "verify_asan_link_order=0:exitcode=99"
    if case:
        kind = case.kind.rstrip("+")
        environment.update(FAULT_NUMBER=str(case.number), FAULT_KIND=str(getattr(errno, kind)) if kind in ERRORS else kind)
        if case.kind != kind:
            environment["FAULT_LASTING"] = str(CLASSES[case.kind])
    try:
        done = subprocess.run(words, cwd=folder, env=environment, stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=SECONDS_PER_RUN)
        code, output, errors = done.returncode, done.stdout, done.stderr
    except subprocess.TimeoutExpired as late:
        code, output, errors = None, late.stdout or b"", late.stderr or b""
    *counts, strikes, _, struck = REPORT.unpack(report.read_bytes())
    report.unlink()
    struck = steady_name(struck.split(b"\0")[0].decode("latin-1").replace(str(folder) + "/", "").replace(str(folder), "."))
    return Run(code, output.decode("latin-1"), errors.decode("latin-1"), counts, struck if strikes else None)


def demand_known_calls(program, shim):
    """Ends everything if the program uses a system call that the shim does not know."""
    def calls(which, path):
        listing = subprocess.run(["nm", "-D", which, path], check=True, capture_output=True, text=True).stdout
        return {name for name in re.findall(r"(\w+)(?:@\S*)?$", listing, re.M) if CALL.fullmatch(name)}

    if unknown := calls("--undefined-only", program) - calls("--defined-only", shim):
        raise SystemExit("the shim does not know these calls: " + " ".join(sorted(unknown)))
