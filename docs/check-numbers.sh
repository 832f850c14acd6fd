#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Compares the numbers that a document states with results of the tour:
# docs/check-numbers.sh DOCUMENT RESULTS_FOLDER
#
# A table of the document that follows "<!-- numbers: FILE... -->" has to give the first
# rows of these CSV files, whose columns stand side by side, the heading column of the
# first file only. Numbers agree to 1e-9 of their value (of 1 below 1), other texts to the
# letter; what has no text in a file may be anything.
#
# The tables stand in the order in which the tour wrote these files, so that a reader who
# takes the document's steps one after another gets its numbers.
set -euo pipefail
document=$(realpath "$1")
cd "$2"

previous=
while read -r file; do
    if [ "$file" -ot "${previous:-$file}" ]; then
        echo "$file was written before $previous, whose table comes first"
        exit 1
    fi
    previous=$file
done < <(sed -n 's/^ *<!-- numbers: \(.*\) -->$/\1/p' "$document" | tr ' ' '\n')

awk '
function isNumber(text) { return text ~ /^-?[0-9]+(\.[0-9]*)?(e[-+]?[0-9]+)?$/ }
function agree(a, b, difference, size) {
    if (!isNumber(a) || !isNumber(b)) return a == b
    difference = a < b ? b - a : a - b
    size = b < 0 ? -b : b
    return difference <= 1e-9 * (size > 1 ? size : 1)
}
function readResults(files, count, i, row, line) {
    split("", results)
    for (i = 1; i <= count; i++) {
        for (row = -1; (getline line < files[i]) > 0; row++) {
            if (i > 1) sub(/^[^,]*/, "", line)
            results[row] = results[row] line
        }
        if (row < 1) { print "no results in " files[i]; failed = 1 }
        close(files[i])
    }
}
{ sub(/^ +/, "") }
/^<!-- numbers: .* -->$/ {
    names = $0
    gsub(/^<!-- numbers: | -->$/, "", names)
    readResults(files, split(names, files, " "))
    row = -3 # above the heading and the line below it
    tables++
}
names && /^\|/ && ++row < 0 { next }
names && /^\|/ {
    gsub(/^\| *| *\|$/, "")
    stated = split($0, cells, / *\| */)
    found = split(results[row], values, ",")
    for (i = 1; i <= (stated > found ? stated : found); i++) {
        if (!(values[i] == "" && i <= found) && !agree(cells[i], values[i])) {
            print names ", row " row + 1 ": stated " cells[i] ", computed " values[i]
            failed = 1
        }
    }
    next
}
row >= -2 { # the first line behind the table
    failed = failed || row < 0
    names = ""
    row = -3
}
END {
    print tables + 0 " tables compared"
    exit failed || !tables
}' "$document"
