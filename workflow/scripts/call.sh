#!/bin/sh
# SPDX-License-Identifier: MIT
# call.sh PLATE RESULTS SCRATCH TIMEOUT LANETOOLS SWITCHES...: calls those samples of a plate that have no result in the
# folder RESULTS, by way of a folder in SCRATCH unless that is empty.
set -eu
plate=$1
results=$2
scratch=$3
timeout=$4
lanetools=$5
shift 5

mkdir -p "$results"
target=$results
if [ -n "$scratch" ]; then
    work=$(mktemp -d "$scratch/lanewright.XXXXXX")
    trap 'rm -rf "$work"' EXIT
    trap 'exit 143' INT TERM
    target=$work/called
    cp -R "$results" "$target"
fi
code=0
"$lanetools" run "$plate" -o "$target" -j 1 --timeout "$timeout" --redo-damaged -- "$@" || code=$?
if [ -n "$scratch" ]; then
    rm -rf "$results.part"
    cp -R "$target" "$results.part"
    rm -rf "$results"
    mv "$results.part" "$results"
fi
exit "$code"
