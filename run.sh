#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage() {
    cat <<'TEXT'
Usage: ./run.sh [--empty]

Installs missing packages (Debian, as root or with sudo), builds Velmora below
build/release and plays a guided tour through two example studies: a trial, and a
simulation study compared with the truth. The tour leaves pictures of every page,
the results as CSV files and a project file in build/tour. With a display one can
watch it, and the windows stay open with the results.

  --empty   start the program without any data instead of the tour
  --help    show this text
TEXT
}

empty=no
for argument in "$@"; do
    case "$argument" in
        --empty) empty=yes ;;
        -h | --help) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
done

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
build_preset release velmora velmora-tour

if [ "$empty" = yes ]; then
    exec build/release/velmora
fi
exec build/release/velmora-tour examples build/tour
