#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    cat <<'TEXT'
Usage: tests/faults.sh [--write | ACT]

Installs missing packages (Debian, as root or with sudo), builds the program of
faults below build/dev, and lets every call of the system that a save, an open,
an import or an export makes fail, one after another; no display is needed.
Prints how many calls there were to fail. Ends with an error where a file or the
analysis is lost, or where the user is not told.

  --write   renew the numbers in docs/reliability.md
  ACT       try one act alone, as the table names it, or "exports", "imports", "kills"
TEXT
}

write=no
act=
case "${1-}" in
    -h | --help) usage; exit 0 ;;
    --write) write=yes ;;
    -*) usage >&2; exit 2 ;;
    *) act=${1-} ;;
esac
[ "$#" -le 1 ] || { usage >&2; exit 2; }

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
build_preset dev velmora-faults

# In memory, where a sync takes no time.
if [ -z "${TMPDIR-}" ] && [ -w /dev/shm ]; then
    export TMPDIR=/dev/shm
fi

log=build/dev/faults
# What a word tells the program to try, into a file of its own.
try() {
    QT_QPA_PLATFORM=offscreen LC_ALL=C QT_LOGGING_RULES='*=false' \
        LD_PRELOAD="$PWD/build/dev/libvelmora_faults.so" \
        build/dev/velmora-faults "$1" >"$log-$1.log" 2>&1
}
fail() {
    tail -n 60 "$log-$1.log" >&2
    echo "A fault does harm: see $log-$1.log" >&2
    exit 1
}

try heading || fail heading
if [ -n "$act" ]; then
    try "$act" || fail "$act"
    cat "$log-heading.log" "$log-$act.log"
    exit 0
fi
started=$SECONDS
try imports &
try exports || fail exports
wait "$!" || fail imports
counts=$(grep -h '^|' "$log"-{heading,exports,imports}.log)
kills=$(grep -h ' kills: ' "$log-exports.log")
printf '%s\n\n%s.\n' "$counts" "$kills" | tee "$log-table.md"
echo "$((SECONDS - started)) seconds"

if [ "$write" = yes ]; then
    sed -i -e "/^<!-- faults -->\$/r $log-table.md" \
        -e '/^<!-- faults -->$/,/^<!-- end of faults -->$/{/^<!--/!d}' docs/reliability.md
fi
