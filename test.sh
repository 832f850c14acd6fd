#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() {
    cat <<'TEXT'
Usage: ./test.sh [--preset PRESET]

Installs missing packages (Debian, as root or with sudo), builds everything in
build/PRESET, and runs all tests. It needs no display.

  --preset PRESET   dev (default: a debug build in which warnings are errors and
                    Qt checks every access to a container), release, asan
                    (address and undefined behaviour sanitizers), tsan (thread
                    sanitizer), or qt6-dev and qt6-release, with Qt 6
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
    # The thread sanitizer of gcc 12 ends with "unexpected memory mapping" where the kernel
    # spreads addresses widely (vm.mmap_rnd_bits above 28).
    launcher=(setarch -R)
fi
"${launcher[@]}" ctest --preset "$preset" --parallel "$(nproc)"
