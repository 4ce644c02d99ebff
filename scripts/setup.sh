# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
# Sourced by the scripts in this folder: changes to the top of the tree, and provides need_packages and quietly.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Sets `missing` to those of the Debian packages that are not installed.
find_missing() {
    local package
    missing=()
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
}

# Installs packages; false, with apt's reasons, if that is not possible.
install_packages() {
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null && { sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; }; } || return 1
        as_root=(sudo)
    fi
    echo "Installing Debian packages: $*"
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >/dev/null
}

# Installs those of the Debian packages that are missing; prints nothing if none is. Ends the script if that is not possible.
need_packages() {
    local missing
    find_missing "$@"
    [ ${#missing[@]} -gt 0 ] || return 0
    install_packages "${missing[@]}" && return
    cat >&2 <<MESSAGE
These Debian packages are missing, and could not be installed: installing needs root or sudo, and the network.
    ${missing[*]}
Ask someone who may install them to run, then start this script again:
    apt-get install --no-install-recommends ${missing[*]}
MESSAGE
    exit 1
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
has_node() {
    command -v node >/dev/null && command -v npm >/dev/null
}
node_packages=()
has_node || node_packages=(nodejs npm)

# True if the report page can be made: Node.js is there or can be installed, and the packages of the page are fetched already
# or their registry answers.
can_make_page() {
    local page=tools/lanetools/report/page
    has_node || install_packages "${node_packages[@]}" >&2 || return 1
    [ build/$page/node_modules/.package-lock.json -nt $page/package-lock.json ] ||
        (cd $page && timeout 15 npm view esbuild version --fetch-retries=0 --fetch-timeout=5000 >/dev/null 2>&1)
}

build_packages=(g++ cmake ninja-build pkg-config libcli11-dev libhts-dev nlohmann-json3-dev zlib1g-dev scdoc)
