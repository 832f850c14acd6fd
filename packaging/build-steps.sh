# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Functions for run.sh, test.sh and bench.sh, which source this in the project's root.
# shellcheck shell=bash

# Installs the missing packages of a list (by default those for building) without asking:
# ensure_packages [LIST]
ensure_packages() {
    local list=${1:-packaging/debian-packages.txt} line missing=()
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "Not a Debian system: install the packages of $list yourself." >&2
        return 0
    fi
    while read -r line || [ -n "$line" ]; do
        case "$line" in '' | '#'*) continue ;; esac
        # shellcheck disable=SC2016 # dpkg-query's own variable
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$line" 2>/dev/null)" = installed ] \
            || missing+=("$line")
    done <"$list"
    [ "${#missing[@]}" -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! sudo -n true 2>/dev/null; then
            echo "Missing packages: ${missing[*]}. Install them as root, then start again." >&2
            return 1
        fi
        as_root=(sudo -n)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# Installs the missing packages for building a preset: ensure_preset_packages PRESET
ensure_preset_packages() {
    ensure_packages packaging/debian-packages.txt
    case "$1" in qt6-*) ensure_packages packaging/debian-packages-qt6.txt ;; esac
}

# Configures a preset and builds the given targets, or all:
# build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1 options=()
    shift
    if command -v ccache >/dev/null; then
        options=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake --preset "$preset" "${options[@]}"
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
