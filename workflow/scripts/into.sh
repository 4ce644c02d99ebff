#!/bin/sh
# SPDX-License-Identifier: MIT
# into.sh RESULTS STAMP COMMAND...: runs the command, which adds to the folder RESULTS. What is there already stays if it
# has the same stamp, which names all that the results are made of. It is removed if it is the workflow's and has another one.
. own.sh
results=$1
stamp=$2
shift 2
claim "$results" "$results.stamp"
if [ "$(cat "$results.stamp" 2>/dev/null)" != "$stamp" ]; then
    rm -rf "$results"
    printf '%s\n' "$stamp" >"$results.stamp" || exit 1
fi
exec "$@"
