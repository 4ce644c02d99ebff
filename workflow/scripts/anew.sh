#!/bin/sh
# SPDX-License-Identifier: MIT
# anew.sh TARGET COMMAND...: runs the command, which makes the file or folder TARGET. The workflow's earlier one is removed.
. own.sh
target=$1
shift
claim "$target"
rm -rf "$target"
exec "$@"
