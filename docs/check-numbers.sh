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
done < <(sed -nE 's/^ *<!-- (numbers|rows): (.*) -->$/\2/p' "$document" | tr ' ' '\n')

awk '
function isNumber(text) { return text ~ /^-?[0-9]+(\.[0-9]*)?(e[-+]?[0-9]+)?$/ }
function agree(a, b, difference, size) {
    if (!isNumber(a) || !isNumber(b)) return a == b
    difference = a < b ? b - a : a - b
    size = b < 0 ? -b : b
    return difference <= 1e-9 * (size > 1 ? size : 1)
}
function isRounded(stated, found, decimals, difference) {
    if (!isNumber(stated) || !isNumber(found)) return stated == found
    decimals = stated ~ /\./ ? length(stated) - index(stated, ".") : 0
    difference = stated < found ? found - stated : stated - found
    return difference <= 0.5 * 10 ^ -decimals * (1 + 1e-9)
}
# Reads up to the headings of a table, and keeps the places of those stated.
function findHeadings(file, stated, count, line, values, i, j) {
    close(file)
    while ((getline line < file) > 0) {
        split("", places)
        for (j = split(line, values, "\t"); j > 0; j--) {
            for (i = 1; i <= count; i++) if (values[j] == stated[i]) places[i] = j
        }
        for (i = 1; i in places; i++) {}
        if (i > count) return 1
    }
    return 0
}
# Reads up to a row that agrees with the stated one in these places.
function findRow(file, stated, count, line, values, i) {
    while ((getline line < file) > 0) {
        split(line, values, "\t")
        for (i = 1; i <= count && isRounded(stated[i], values[places[i]]); i++) {}
        if (i > count) return 1
    }
    return 0
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
/^<!-- rows: .* -->$/ {
    part = $3
    row = -3
    tables++
}
part && /^\|/ {
    gsub(/^\| *| *\|$/, "")
    stated = split($0, cells, / *\| */)
    row++
    if ((row == -2 && !findHeadings(part, cells, stated)) \
        || (row >= 0 && !findRow(part, cells, stated))) {
        print part ": not there, or not in this order: " $0
        failed = 1
    }
    next
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
    names = part = ""
    row = -3
}
END {
    print tables + 0 " tables compared"
    exit failed || !tables
}' "$document"
