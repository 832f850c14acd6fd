#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() {
    cat <<'TEXT'
Usage: ./test.sh [--preset PRESET]

Installs missing packages (Debian, as root or with sudo), builds everything below
build/PRESET and runs all tests; no display is needed.

  --preset PRESET   dev (the default: a debug build, in which Qt checks every
                    access to a container and warnings are errors), release,
                    asan (address and undefined behaviour sanitizers), tsan
                    (thread sanitizer), or qt6-dev and qt6-release, with Qt 6
  --help            show this text
TEXT
}

preset=dev
while [ "$#" -gt 0 ]; do
    case "$1" in
        --preset)
            [ "$#" -ge 2 ] || { usage >&2; exit 2; }
            preset=$2
            shift
            ;;
        -h | --help) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_preset_packages "$preset"
build_preset "$preset"
launcher=()
if [ "$preset" = tsan ] && setarch -R true 2>/dev/null; then
    # Addresses that a kernel spreads widely (vm.mmap_rnd_bits above 28) end the thread
    # sanitizer of gcc 12 with "unexpected memory mapping".
    launcher=(setarch -R)
fi
"${launcher[@]}" ctest --preset "$preset" --parallel "$(nproc)"
