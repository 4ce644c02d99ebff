#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What a user has after `cmake --install`: installed.sh BUILD. Installs into a folder of its own, builds the two examples of
# a library outside the tree against it, and has the installed program call a plate with each.
set -euo pipefail

build=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
# No settings of this machine's own.
export HOME=$work XDG_CONFIG_HOME=$work/config PYTHONDONTWRITEBYTECODE=1

cmake --install "$build" --prefix "$work/installed" >/dev/null
examples=installed/share/doc/lanewright-dev/examples
for page in lanewright.1 lanetools.1 lanetools-{import,run,summary,export,report}.1 samplegen.1 calls-agree.1 lanewright-basecaller.7; do
    gzip -t "installed/share/man/man${page##*.}/$page.gz"
done

export PKG_CONFIG_PATH=$work/installed/share/pkgconfig
cmake -S $examples/cmake_caller -B mine -DCMAKE_PREFIX_PATH="$work/installed" >/dev/null
cmake --build mine >/dev/null
CFLAGS=$(pkg-config --cflags lanewright) /usr/bin/python3 $examples/python_caller/build.py "$work/python_caller.so" >/dev/null

cp mine/my_caller.so python_caller.so installed/lib/lanewright/
printf '[Base Callers]\nMine\tmy_caller.so\nPython\tpython_caller.so\nLanecall 2.0\tlanecall.so\n[Default]\nLanecall 2.0\n' \
    >installed/etc/lanewright/basecall.ini
installed/bin/samplegen plate --plate run1 --wells 3 --bases 100 >/dev/null
mkdir out
# In one run, so that the libraries also bear each other.
installed/bin/lanewright -IP plate -OD out -BC lanecall.so python_caller.so my_caller.so -FA >console.txt
for code in LC1 Py Min; do
    installed/bin/calls-agree plate/truth.fasta "out/plate_${code}_QX1" --at-least 99 --cover 99
done

# The Python reader, as its package has it.
PYTHONPATH=installed/lib/python3/dist-packages /usr/bin/python3 -c '
import lanewright
assert len(lanewright.read("out/plate_Py_QX1/run1A01.esd").bases) >= 100'
