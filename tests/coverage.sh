#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    cat <<'TEXT'
Usage: tests/coverage.sh

Installs missing packages (Debian, as root or with sudo), builds everything in
build/coverage with clang, runs all tests, and prints how many lines and branches
of expr/, model/, io/, analysis/, report/, batch/ and app/ they reach. It needs no
display.

Every outcome of a condition is a branch, including those within && and ||. For a
template, the instantiation that the tests reach best counts.

build/coverage/unreached.txt lists what the tests do not reach; build/coverage/html
shows the sources with all counts.
TEXT
}

case "${1-}" in
    '') ;;
    -h | --help) usage; exit 0 ;;
    *) usage >&2; exit 2 ;;
esac

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
ensure_packages packaging/coverage-packages.txt

# The counters need full paths of the sources, which ccache would make relative.
unset CCACHE_BASEDIR CCACHE_NOHASHDIR
build_preset coverage

folder=$PWD/build/coverage
rm -rf "$folder/profiles" "$folder/html"
LLVM_PROFILE_FILE="$folder/profiles/%p.profraw" ctest --preset coverage --parallel "$(nproc)"
llvm-profdata merge -o "$folder/tests.profdata" "$folder"/profiles/*.profraw

programs=()
while read -r program; do
    programs+=(-object "$program")
done < <(find "$folder/tests" -type f -name 'tst_*' -perm -u+x | sort
    echo "$folder/velmora-batch") # tests start it

sources=("$PWD"/{expr,model,io,analysis,report,batch,app})

# llvm-cov on all test programs, of which the first is named without -object, and sources:
# of_tests COMMAND OPTIONS... SOURCE...
of_tests() {
    local command=$1
    shift
    # Mismatched functions are inline ones that some of the programs do not call.
    llvm-cov "$command" "-instr-profile=$folder/tests.profdata" "${programs[@]:1}" "$@" \
        2> >(grep -v 'functions have mismatched data' >&2)
}

of_tests show -format=html -show-branches=count -show-instantiations=false \
    -output-dir="$folder/html" "${sources[@]}" >/dev/null
# In the text, a line that begins with its number and its count is followed by the branches
# that begin in it.
of_tests show -show-branches=count -show-instantiations=false "${sources[@]}" \
    | awk '
        /^\/.*:$/ { file = $0 }
        /^ *[0-9]+\|/ { line = $0; isListed = 0 }
        /^ *[0-9]+\| *0\|/ || /Branch \(.*: 0[],]/ {
            if (file != "") { print file; file = "" }
            if (!isListed) { print line; isListed = 1 }
            if ($0 != line) { print }
        }' >"$folder/unreached.txt"
row='%-36s %7s %9s %8s %10s %9s %8s\n'
# shellcheck disable=SC2059 # a row is a format
printf "\n$row" '' lines unreached reached branches unreached reached
for source in "${sources[@]}"; do
    # Fields from the left: regions, functions, lines and branches.
    of_tests report -show-branch-summary "$source" | awk -v row="$row" -v folder="${source##*/}" '
        NF == 13 && $2 ~ /^[0-9]+$/ {
            name = $1 == "TOTAL" ? "all of " folder : folder "/" $1
            printf row, name, $8, $9, $10, $11, $12, $13
        }'
done
