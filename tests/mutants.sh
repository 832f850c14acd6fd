#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    cat <<'TEXT'
Usage: tests/mutants.sh [--seed N] [--count N] [--folder FOLDER]... [--jobs N] [--list]
       tests/mutants.sh --only NAME...

Installs missing packages (Debian, as root or with sudo), plants faults in a copy
of the sources, one at a time, and reports which of them the tests catch. It needs
no display. The faults are drawn at random over the folders of the product except
report/ and compat/, in proportion to the lines that can be changed: a comparison,
an operator, a number, a condition, a name or two arguments exchanged, a returned
value replaced, a statement left out.

Tests near the fault run first. The first test that fails or takes far too long
catches it. A fault that does not compile, or that compiles to the same program,
is replaced by another one.

  --seed N         seed, to repeat a draw (default: 1)
  --count N        number of faults (default: 100); a few hundred take an hour on
                   two processors
  --folder FOLDER  only this folder, such as analysis or app/window
  --only NAME...   only these faults, such as analysis:7
  --list           list the faults and plant none
  --jobs N         faults at a time (default: the number of processors)

build/mutants/survivors.diff has the faults that no test caught. Other sources give
other faults.
TEXT
}

case "${1-}" in
    -h | --help) usage; exit 0 ;;
esac

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
ensure_packages packaging/mutants-packages.txt
exec python3 tests/mutants.py "$@"
