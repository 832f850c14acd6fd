#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    cat <<'TEXT'
Usage: fuzz/run.sh SECONDS [TARGET...]

Installs missing packages (Debian, as root or with sudo), builds the fuzzers in
build/fuzz with clang, and runs all of them, or the given ones, for SECONDS each,
two at a time. Fails if one finds a fault.

Targets: expression csv numbers project window

The search starts from the inputs in fuzz/corpus. It keeps new inputs in
build/fuzz/corpus for later runs, and inputs that show a fault in
build/fuzz/findings. To repeat a fault: build/fuzz/fuzz_TARGET FILE
TEXT
}

# Runs one target; its log goes to build/fuzz/logs. run_target SECONDS TARGET
run_target() {
    local seconds=$1 target=$2 seeds=$2 status=0
    [ "$target" != window ] || seeds=project
    mkdir -p "build/fuzz/corpus/$target" build/fuzz/findings build/fuzz/logs
    local log="build/fuzz/logs/$target.log"
    "build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=120 -report_slow_units=60 \
        -rss_limit_mb=2048 -dict="fuzz/dictionaries/$seeds" -print_final_stats=1 \
        -artifact_prefix="build/fuzz/findings/$target-" \
        "build/fuzz/corpus/$target" "fuzz/corpus/$seeds" >"$log" 2>&1 || status=$?
    if [ "$status" -ne 0 ]; then
        tail -n 60 "$log" >&2
        echo "$target: failed, see $log" >&2
        return 1
    fi
    echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") inputs tried," \
        "$(find "build/fuzz/corpus/$target" -type f | wc -l) kept," \
        "$(sed -n 's/.*DONE *cov: \([0-9]*\) .*/\1/p' "$log") edges covered"
}

if [ "${1-}" = --one ]; then # this script calls itself once for each target
    run_target "$2" "$3"
    exit
fi
case "${1-}" in
    -h | --help) usage; exit 0 ;;
    '' | *[!0-9]*) usage >&2; exit 2 ;;
esac
seconds=$1
shift
[ "$#" -gt 0 ] || set -- expression csv numbers project window

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
ensure_packages fuzz/debian-packages.txt
build_preset fuzz "${@/#/fuzz_}"

export QT_QPA_PLATFORM=offscreen LC_ALL=C
export XDG_CONFIG_HOME="$PWD/build/fuzz/settings"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1
[ ! -d /dev/shm ] || export TMPDIR=/dev/shm # keeps the files of each input off the disk
printf '%s\n' "$@" | xargs -P 2 -n 1 "$0" --one "$seconds"
