#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the pictures in docs/images anew: plays the tour and takes them from it. The studies
# are played from a folder of their own, as the window shows where the data are.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
ensure_packages packaging/report-packages.txt
build_preset release velmora-tour

study=/tmp/study
mkdir "$study"
trap 'rm -rf "$study"' EXIT
cp -r examples/biomarker examples/simulation "$study"
env -u QT_SCALE_FACTOR QT_QPA_PLATFORM=offscreen \
    build/release/velmora-tour "$study" "$study/results"

# take PICTURE_OF_THE_TOUR NAME
take() {
    cp "$study/results/$1.png" "docs/images/$2.png"
}
take biomarker/0-import import
take biomarker/0-bootstrap-results bootstrap-results
take biomarker/1-endpoints endpoints
take biomarker/1-endpoint-with-eta endpoint-with-eta
take biomarker/2-weights weights
take biomarker/3-probability-average-without-eta probability
take biomarker/4-dose-choice-average-without-eta dose-choice
take biomarker/4-certainty certainty
take simulation/0-import simulation-import
take simulation/4-dose-choice simulation-dose-choice
take simulation/5-comparison-by-true-models simulation-comparison
pdftoppm -r 80 -f 1 -l 1 -singlefile -png "$study/results/biomarker/report.pdf" docs/images/report
