#!/bin/sh
# SPDX-License-Identifier: MIT
# call.sh PLATE RESULTS SWITCHES...: calls those samples of a plate that have no result in the folder RESULTS, by way of a
# folder in SCRATCH unless that is empty. A sample may take TIMEOUT seconds.
set -eu
. own.sh
plate=$1
results=$2
shift 2

mkdir -p "$results"
target=$results
if [ -n "$SCRATCH" ]; then
    work=$(mktemp -d "$SCRATCH/lanewright.XXXXXX")
    trap 'rm -rf "$work"' EXIT
    trap 'exit 143' INT TERM
    target=$work/called
    cp -R "$results" "$target"
fi
code=0
lanetools run "$plate" -o "$target" -j 1 --timeout "$TIMEOUT" --redo-damaged -- "$@" || code=$?
if [ -n "$SCRATCH" ]; then
    claim "$results" "$results.part"
    rm -rf "$results.part"
    cp -R "$target" "$results.part"
    rm -rf "$results"
    mv "$results.part" "$results"
fi
exit "$code"
