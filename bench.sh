#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() {
    cat <<'TEXT'
Usage: ./bench.sh [--renew | [--benchmark_...] [SUBJECT...]]

Installs missing packages (Debian, as root or with sudo), builds Velmora below
build/release and benchmarks it against hand-written code. No display is needed.
It takes five to ten minutes after the build and writes build/bench/ratios.csv;
docs/performance.md explains the rows.

The exit code is 1 if a ratio exceeds its bar. A ratio that stays undecided, as on
a busy machine, is no failure.

  --renew          measure all and renew the table of docs/performance.md
  SUBJECT          measure this only: expressions, probability, certainty, recalculation,
                   growth, csv, folder, project, batch, editing, start or pages
  --benchmark_...  options of the benchmark library, as --benchmark_filter=REGEX
  --help           show this text
TEXT
}

# Writes the rows of ratios.csv into the document, between its two marks.
renew_table() {
    awk -F, 'NR == 1 { print "| row | ratio | interval | bar | pairs |\n|---|---|---|---|---|" }
        NR > 1 { printf "| %s | %.2f | %.2f to %.2f | %s | %d |\n", $1, $2, $4, $5, $3, $6 }' \
        build/bench/ratios.csv >build/bench/table.md
    sed -i -e '/<!-- ratios -->/,/<!-- end of ratios -->/{//!d}' \
        -e '/<!-- ratios -->/r build/bench/table.md' docs/performance.md
}

renews=no
for argument in "$@"; do
    case "$argument" in
        -h | --help) usage; exit 0 ;;
        --renew) [ $# -eq 1 ] || { usage >&2; exit 2; }; renews=yes; shift ;;
        --benchmark_*) ;;
        -*) usage >&2; exit 2 ;;
    esac
done

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
mkdir -p build/bench
rm -f build/bench/ratios.csv
ensure_packages packaging/debian-packages.txt
build_preset release velmora-bench
status=0
build/release/velmora-bench --output build/bench/ratios.csv "$@" || status=$?
if [ "$renews" = yes ] && [ -e build/bench/ratios.csv ]; then
    renew_table
fi
exit "$status"
