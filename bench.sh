#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() {
    cat <<'TEXT'
Usage: ./bench.sh [--benchmark_...] [SUBJECT...]

Installs missing packages (Debian, as root or with sudo), builds Velmora below
build/release and measures how long its work takes beside the same work written by
hand. No display is needed. It takes three to eight minutes after the build and writes
build/bench/ratios.csv; docs/performance.md explains the rows.

The exit code is 1 if a ratio exceeds its bar.

  SUBJECT          measure this only: expressions, probability, certainty, recalculation,
                   growth, csv, folder, project, batch or editing
  --benchmark_...  options of the benchmark library, as --benchmark_filter=REGEX
  --help           show this text
TEXT
}

for argument in "$@"; do
    case "$argument" in
        -h | --help) usage; exit 0 ;;
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
exec build/release/velmora-bench --output build/bench/ratios.csv "$@"
