#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What Tab completes in bash: completion.sh TREE PROGRAMS. Every value that is completed is one that the program takes.
set -euo pipefail
tree=$(realpath "$1")
PATH=$(realpath "$2"):$PATH
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir -p plate1 "my plate"
touch plate1/a.rsd plates.txt

source "$tree/packaging/completion/lanewright"
compopt() { options+=" $*"; }

# complete WORDS...: the completions of the last word, sorted, in one line, and the options of readline, "; " between them.
complete_line() {
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    options=""
    "_${1##*/}"
    echo "$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd ' ');$options"
}

failed=0
expect() {
    local expected=$1 came
    shift
    came=$(complete_line "$@")
    [ "$came" = "$expected" ] || { echo "$*: '$came' instead of '$expected'" >&2; failed=1; }
}

# With "filenames", readline would put a separator after a folder.
expect "plate1; -o nospace" lanewright -IP pla
expect "my\\ plate; -o nospace" lanewright -BC -IP 'my\ p'
expect "plate1; -o nospace" lanetools run pla
expect "plate1; -o nospace" lanetools summary plate1 --raw pla
expect "plate1/a.rsd; -o filenames" lanewright -if plate1/
expect "-FA -FAG -FAP -FA_;" lanewright -IP plate1 -f
expect "-PILE -PROC_TXT;" lanetools run plate1 -o out -- -BC -P
expect "lanecall.so;" lanewright -BC l
expect "import;" lanetools i
expect "--sheet;" lanetools export --sh
expect "phd;" lanetools export out --format = p
expect "file well;" lanetools import ab1 --name ""

for list in import:--name summary:--format export:--format export:--per export:--trim; do
    for value in $(_lanetools_values "${list%%:*}" "${list#*:}"); do
        format=$([ "${list%%:*}" = export ] && echo "--format fastq -o reads" || echo "-o reads")
        [ "$list" != export:--format ] || format="-o reads"
        # shellcheck disable=SC2086
        message=$(lanetools "${list%%:*}" plate1 "${list#*:}" "$value" $format 2>&1 || true)
        [[ $message == "lanetools: plate1: "*"no "*" in this folder" || $message == "lanetools: plate1: it has no "* ]] || { echo "${list#*:} $value: $message" >&2; failed=1; }
    done
done
exit $failed
