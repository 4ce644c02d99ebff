#!/bin/sh
# SPDX-License-Identifier: MIT
# into.sh RESULTS STAMP COMMAND...: runs the command, which adds to the folder RESULTS. What is there already stays if it
# has the same stamp, which names all that the results are made of, and is removed otherwise.
results=$1
stamp=$2
shift 2
[ "$(cat "$results.stamp" 2>/dev/null)" = "$stamp" ] || rm -rf "$results"
printf '%s\n' "$stamp" >"$results.stamp"
exec "$@"
