#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() {
    cat <<'TEXT'
Usage: ./bench.sh [--benchmark_...] [SUBJECT...]
       ./bench.sh --renew

Installs missing packages (Debian, as root or with sudo), builds Velmora in
build/release, and benchmarks it against hand-written code. It needs no display.
After the build it takes up to ten minutes, on a busy machine up to twenty. It
writes build/bench/ratios.csv; docs/performance.md explains the rows.

The exit code is 1 if a row misses its bar. An undecided row is no failure.

  SUBJECT          measure only this: expressions, probability, certainty,
                   recalculation, growth, csv, folder, project, batch, editing,
                   start or pages
  --benchmark_...  an option of the benchmark library, such as
                   --benchmark_filter=REGEX
  --renew          measure everything and renew the rows in docs/performance.md
  --help           show this text
TEXT
}

renewing=false
for argument in "$@"; do
    case "$argument" in
        -h | --help) usage; exit 0 ;;
        --renew) renewing=true ;;
        --benchmark_*) ;;
        -*) usage >&2; exit 2 ;;
    esac
done

if $renewing && [ "$#" -gt 1 ]; then
    usage >&2
    exit 2
fi

# Prints the machine and the rows as a table for docs/performance.md. Fails if a row lacks its
# ratio or the ends of its interval.
rows_of() {
    local processor system
    processor=$(sed -n 's/^model name[^:]*: *//p' /proc/cpuinfo | head -n 1)
    system=$(sed -n 's/^PRETTY_NAME="\(.*\)"$/\1/p' /etc/os-release)
    printf '%s\n\n' "Measured on $(nproc) processors ${processor:-of an unknown kind}, \
${system:-unknown system}, $(c++ --version | head -n 1), load $(cut -d ' ' -f 1 /proc/loadavg)."
    awk -F , '
        NR == 1 { print "| row | ratio | interval | bar | pairs |"; print "|---|---|---|---|---|"; next }
        $2 == "" || $4 $5 ~ /inf/ { print "not measured: " $1 >"/dev/stderr"; lacking = 1 }
        { printf "| %s | %.3f | %.3f to %.3f | %s | %d |\n", $1, $2, $4, $5, $3 == "" ? "none" : $3, $6 }
        END { exit lacking || NR < 2 }' "$1"
}

# Replaces the text between the markers of docs/performance.md with a file.
replace_rows() {
    sed -i -e '/^<!-- rows -->$/,/^<!-- end of rows -->$/ {' \
        -e "/^<!-- rows -->\$/ r $1" -e '/^<!--/! d' -e '}' docs/performance.md
}

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
mkdir -p build/bench
rm -f build/bench/ratios.csv
ensure_packages packaging/debian-packages.txt
build_preset release velmora-bench
if ! $renewing; then
    exec build/release/velmora-bench --output build/bench/ratios.csv "$@"
fi
code=0
build/release/velmora-bench --output build/bench/ratios.csv || code=$?
if ! rows_of build/bench/ratios.csv >build/bench/rows.md; then
    echo "docs/performance.md keeps its rows." >&2
    exit 1
fi
replace_rows build/bench/rows.md
exit "$code"
