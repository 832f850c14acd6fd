#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    cat <<'TEXT'
Usage: tests/faults.sh [--write | ACT]

Installs missing packages (Debian, as root or with sudo), builds the program of
faults in build/dev, and lets every system call of a save, an open, an import or
an export fail, one after another. It needs no display. Prints how many calls
there were. Ends with an error if a file or the analysis is lost, or if the
program does not report the fault to the user.

  --write   renew the numbers in docs/reliability.md
  ACT       try only this act of the table, or "exports", "imports" or "kills"
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
# Runs the program for a word, with a log file of its own.
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
