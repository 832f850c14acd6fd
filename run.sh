#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() {
    cat <<'TEXT'
Usage: ./run.sh [--empty] [--qt6]

Installs missing packages (Debian, as root or with sudo), builds Velmora in
build/release, and plays a guided tour through two example studies: a trial, and
a simulation study that is compared with the truth. The tour saves pictures of
every page, results as CSV files, reports and project files in build/tour. With a
display you can watch it; the windows stay open with the results.

  --empty   start the program without data instead of the tour
  --qt6     build with Qt 6 instead of Qt 5, in build/qt6-release
  --help    show this text
TEXT
}

empty=no
preset=release
for argument in "$@"; do
    case "$argument" in
        --empty) empty=yes ;;
        --qt6) preset=qt6-release ;;
        -h | --help) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
done

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_preset_packages "$preset"
build_preset "$preset" velmora velmora-tour

if [ "$empty" = yes ]; then
    exec "build/$preset/velmora"
fi
exec "build/$preset/velmora-tour" examples build/tour
