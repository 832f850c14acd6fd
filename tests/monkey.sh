#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    cat <<'TEXT'
Usage: tests/monkey.sh [--seed N] [--actions N]

Installs missing packages (Debian, as root or with sudo), builds the monkey in
build/asan with the address and undefined behaviour sanitizers, and lets it act on
the window at random. It needs no display. Fails on a crash, a warning, a wait of
more than 5 seconds, or growing memory.

  --seed N      seed, to repeat a run (default: 1)
  --actions N   number of actions (default: 300)
TEXT
}

seed=1
actions=300
while [ "$#" -gt 0 ]; do
    case "$1" in
        --seed | --actions)
            case "${2-}" in '' | *[!0-9]*) usage >&2; exit 2 ;; esac
            if [ "$1" = --seed ]; then seed=$2; else actions=$2; fi
            shift
            ;;
        -h | --help) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
    shift
done

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
build_preset asan velmora-monkey

export QT_QPA_PLATFORM=offscreen LC_ALL=C
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1
log="build/asan/monkey-$seed.log"
if ! build/asan/velmora-monkey --seed "$seed" --actions "$actions" >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    echo "The monkey found a fault: seed $seed, see $log" >&2
    exit 1
fi
tail -n 1 "$log"
