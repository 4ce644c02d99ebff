#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the command blocks of README and docs as a reader would type them, and compares what comes out.

    check_commands.py TREE BUILD PAGE...

A block that is marked ```console holds commands (lines that begin with "$ ") and, after each, the lines that it shows:
standard output and standard error as on a terminal. "..." on a line stands for any number of lines, inside a line for any
text; times count as equal. A block that is marked ```sh holds commands whose output is not shown. A command is expected to end with exit code 0 unless "$ echo $?" follows it. Commands of one
page run in one shell, in a clone of TREE of their own whose build/ is BUILD. An HTML comment that begins with "run:"
holds commands that the page needs and does not show.
"""

import os
import re
import subprocess
import sys
import tempfile

TIME = re.compile(r"[A-Z][a-z]{2} [A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d \d{4}")
DONE = "--- done, exit code "


def commands(page):
    """The page's commands in order: line number, command, the lines shown (None where nothing is compared)."""
    found, kind = [], None
    for number, line in enumerate(page.splitlines(), 1):
        if kind is None:
            kind = {"```console": "block", "```sh": "script", "<!-- run:": "hidden"}.get(line)
            if line.startswith("```") and kind is None:
                kind = "other"
        elif kind == "other" and line.startswith("$ "):
            raise SystemExit(f"line {number}: a command in a block that is not marked as console: {line}")
        elif line == ("-->" if kind == "hidden" else "```"):
            kind = None
        elif kind in ("hidden", "script"):
            if found and found[-1][1].endswith("\\"):
                found[-1] = (found[-1][0], found[-1][1] + "\n" + line, None)
            else:
                found.append((number, line, None))
        elif kind == "block" and line.startswith("$ "):
            found.append((number, line[2:], []))
        elif kind == "block" and found and found[-1][1].endswith("\\"):
            found[-1] = (found[-1][0], found[-1][1] + "\n" + line.removeprefix("> "), [])
        elif kind == "block":
            found[-1][2].append(line)
    return found


def pattern(lines):
    """A regular expression for the shown lines."""
    parts = []
    for line in lines:
        line = TIME.sub("TIME", line.split("   # ")[0].rstrip())
        parts.append(r"(?:.*\n)*?" if line == "..." else re.escape(line).replace(r"\.\.\.", ".*") + r"[ \t]*\n")
    return "".join(parts)


def check(page_path, folder):
    """The faults of one page."""
    with open(page_path, encoding="utf-8") as file:
        page = commands(file.read())
    shell = subprocess.Popen(["bash"], cwd=folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, text=True)
    faults, code = [], 0
    for index, (number, command, shown) in enumerate(page):
        command = command.split("   # ")[0].rstrip()
        asks_code = index + 1 < len(page) and page[index + 1][1] == "echo $?"
        restore = f"(exit {code})\n" if command == "echo $?" else ""
        shell.stdin.write(f"{restore}{command}\necho '{DONE}'$?\n")
        shell.stdin.flush()
        output = ""
        while not (line := shell.stdout.readline()).startswith(DONE):
            if not line:
                return faults + [f"{page_path}:{number}: the shell ended in: {command}"]
            output += line
        code = int(line.removeprefix(DONE))
        if code != 0 and not asks_code:
            faults.append(f"{page_path}:{number}: exit code {code}: {command}\n{output}")
        if shown is not None and not re.fullmatch(pattern(shown), TIME.sub("TIME", output)):
            faults.append(f"{page_path}:{number}: {command}\n  shown:\n" + "\n".join(shown) + f"\n  came:\n{output}")
    shell.stdin.close()
    shell.wait()
    return faults


def main():
    tree, build, pages = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2]), sys.argv[3:]
    faults, count = [], 0
    for page in pages:
        path = os.path.join(tree, page)
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["git", "clone", "-q", tree, folder + "/lanewright"], check=True)
            os.symlink(build, folder + "/lanewright/build")
            faults += check(path, folder + "/lanewright")
            with open(path, encoding="utf-8") as file:
                count += len(commands(file.read()))
    print("\n".join(faults))
    print(f"{count} commands on {len(pages)} pages, {len(faults)} faults")
    return 1 if faults or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
