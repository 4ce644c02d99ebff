# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
# Sourced by the scripts in this folder: changes to the top of the tree, and provides need_packages and quietly.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Installs those of the Debian packages that are missing; prints nothing if none is.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "These Debian packages are missing, and installing them needs root: ${missing[*]}" >&2; exit 1; }
        as_root=(sudo)
    fi
    echo "Installing Debian packages: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Runs a command without showing its output, unless the command fails.
quietly() {
    local output
    output=$(mktemp)
    if ! "$@" >"$output" 2>&1; then
        cat "$output"
        rm -f "$output"
        echo "failed: $*" >&2
        exit 1
    fi
    rm -f "$output"
}

# Node.js makes the report page of lanetools. Debian's is installed unless the commands are there from elsewhere.
need_node() {
    if ! command -v node >/dev/null || ! command -v npm >/dev/null; then need_packages nodejs npm; fi
}

build_packages=(g++ cmake ninja-build pkg-config libcli11-dev libhts-dev nlohmann-json3-dev zlib1g-dev scdoc)
