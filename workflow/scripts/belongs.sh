#!/bin/sh
# SPDX-License-Identifier: MIT
# belongs.sh FOLDER PLATE COMMAND...: runs the command if FOLDER has what was made of PLATE, or nothing yet.
folder=$1
plate=$2
shift 2
[ -e "$folder/source" ] || printf '%s\n' "$plate" >"$folder/source"
owner=$(cat "$folder/source")
if [ "$owner" != "$plate" ]; then
    echo "$folder belongs to another plate, $owner, and $plate needs a name or an output of its own"
    exit 2
fi
exec "$@"
