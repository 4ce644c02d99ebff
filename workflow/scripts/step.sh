#!/bin/sh
# SPDX-License-Identifier: MIT
# step.sh CODE LOG COMMAND...: runs one step of a plate, writes its exit code to the file CODE and its messages to LOG, and
# ends well whatever the code: in a job of many plates, a step that fails would undo and repeat the other plates too.
# 0, 2 and 3 are answers of lanetools about the plate. Anything else is a breakdown, and is tried twice more.
. own.sh
code_file=$1
log=$2
shift 2
claim "$code_file" "$log"
for pause in 2 10 ""; do
    "$@" >"$log" 2>&1
    code=$?
    case $code in 0 | 2 | 3) break ;; esac
    [ -z "$pause" ] || sleep "$pause"
done
echo "$code" >"$code_file"
