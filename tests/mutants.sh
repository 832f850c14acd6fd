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
of the sources, one at a time, and tells which of them the tests catch; no display
is needed. Faults are drawn by rule over all folders of the product, in proportion
to the lines that can be changed: a comparison, an operator, a number, a condition,
a name or two arguments exchanged, a returned value replaced, a statement left out.

Tests near the fault run first, and the first that fails or takes far too long
catches it. A fault that does not compile, or that the compiler takes for the same
program, is dropped for another one.

  --seed N         repeats a trial; the default is 1
  --count N        the default is 100; some hundred take an hour on two processors
  --folder FOLDER  of these folders alone, such as analysis or app/window
  --only NAME...   these faults alone, such as analysis:7
  --list           shows the faults and plants none
  --jobs N         at the same time; the default is the number of processors

Faults that no test caught are in build/mutants/survivors.diff. The faults that are
drawn are others where the sources are others.
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
