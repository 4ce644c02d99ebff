# SPDX-License-Identifier: MIT
# shellcheck shell=sh
# For the steps of a plate, which source this: what they may remove or overwrite. See made.py.

# True if the path exists and is more than an empty file or folder. A folder that cannot be listed is.
is_something() {
    [ ! -L "$1" ] || return 0
    [ -e "$1" ] || return 1
    if [ -d "$1" ]; then [ -n "$(ls -A "$1" 2>&1)" ]; else [ ! -f "$1" ] || [ -s "$1" ]; fi
}

# claim PATH...: notes files and folders in a plate's folder as the workflow's; ends this step if one exists and is not.
# Its variables are those of the script that sources it, hence their names.
claim() {
    for own_path in "$@"; do
        own_stamp=${own_path%/*}/made.stamp
        if [ ! -f "$own_stamp" ]; then
            echo "$own_stamp is missing: start the workflow again, with its hooks" >&2
            exit 1
        fi
        if ! grep -q -x -F -e "${own_path##*/}" "$own_stamp"; then
            if is_something "$own_path"; then
                echo "$own_path exists and was not made by this workflow: it stays as it is" >&2
                exit 1
            fi
            printf '%s\n' "${own_path##*/}" >>"$own_stamp" || exit 1
        fi
    done
}
