#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    cat <<'TEXT'
Usage: tests/report.sh

Installs missing packages (Debian, as root or with sudo), lets the tour write the
reports of both example studies, and opens them with other programs: HTML with a
browser without network and with tidy, PDF with poppler, OpenDocument with
LibreOffice. Compares their numbers with what the tour saved from the pages, and
their hashes with the files.
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
ensure_packages packaging/report-packages.txt
build_preset dev velmora-tour

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
env -u QT_SCALE_FACTOR QT_QPA_PLATFORM=offscreen \
    build/dev/velmora-tour examples "$work/tour" >/dev/null

fail() {
    echo "tests/report.sh: $*" >&2
    exit 1
}

# The words of a text in one line, separated by ASCII blanks.
words() {
    sed 's/\xc2\xa0/ /g' | tr -s ' \n\f' ' '
}

# The headings of a page, one per line.
headings() {
    sed -n 's/^<h[123]>\(.*\)<\/h[123]>$/\1/p' "$1"
}

# Checks that the text has every heading of the page: has_headings PAGE TEXT
has_headings() {
    local heading text
    text=$(words <"$2")
    while read -r heading; do
        [[ $text == *"$heading"* ]] || fail "$2 lacks the heading $heading"
    done < <(headings "$1")
}

check_html() {
    local page=$1 pictures
    tidy -q -e "$page" || fail "$page is not valid"
    ! grep -qiE '<script|<link|(src|href)="?(http|file|//)|@import|url\(' "$page" \
        || fail "$page refers to something"
    # A profile of its own, and no name of any host is known to it.
    HOME=$work chromium --headless --no-sandbox --disable-gpu --user-data-dir="$work/chromium" \
        --host-resolver-rules='MAP * ~NOTFOUND' --print-to-pdf="$work/printed.pdf" \
        "file://$page" >"$work/chromium.log" 2>&1 || fail "no browser opens $page"
    pictures=$(grep -c '<img ' "$page")
    # Behind two lines of headings; a picture may have a mask that counts, too.
    [ "$(pdfimages -list "$work/printed.pdf" | awk 'NR > 2 && $3 == "image"' | wc -l)" \
        -ge "$pictures" ] || fail "the browser does not show every picture of $page"
    pdftotext "$work/printed.pdf" "$work/printed.txt"
    has_headings "$page" "$work/printed.txt"
}

check_pdf() {
    local page=$1 pdf=$2 heading
    pdftotext "$pdf" "$work/pdf.txt"
    has_headings "$page" "$work/pdf.txt"
    while read -r heading; do
        [ "$(grep -cFx "$heading" "$work/pdf.txt")" -eq 1 ] || fail "$pdf: $heading is not once"
    done < <(headings "$page")
    [ "$(pdfimages -list "$pdf" | wc -l)" -eq 2 ] || fail "$pdf has bitmaps"
    [ "$(pdffonts "$pdf" | awk 'NR > 2 && $(NF - 4) == "yes"' | wc -l)" \
        -eq "$(($(pdffonts "$pdf" | wc -l) - 2))" ] || fail "$pdf lacks fonts"
    local count number last=
    count=$(pdfinfo "$pdf" | sed -n 's/^Pages: *//p')
    for number in $(seq "$count"); do
        pdftotext -f "$number" -l "$number" "$pdf" - | words >"$work/onepage.txt"
        grep -q "Page $number of $count" "$work/onepage.txt" || fail "$pdf: no number on $number"
        grep -q "^Dose finding report - Data: " "$work/onepage.txt" \
            || fail "$pdf: no heading on page $number"
        # The first line is the heading, and the last the number of the page.
        pdftotext -layout -f "$number" -l "$number" "$pdf" - | grep '[^[:space:]]' \
            | sed '1d;$d;s/^ *//' >"$work/lines.txt"
        ! head -n 3 "$work/lines.txt" | grep -qFx -- "${last:-no line}" \
            || fail "$pdf: page $number repeats $last"
        last=$(tail -n 1 "$work/lines.txt")
    done
    [[ $(pdftotext -l 1 "$pdf" -) == *"What speaks against it"* ]] || fail "$pdf: no decision first"
}

check_odt() {
    local page=$1 odt=$2 part
    rm -rf "$work/odt"
    unzip -q "$odt" -d "$work/odt"
    [[ $(unzip -Z1 "$odt") == mimetype$'\n'* ]] || fail "$odt does not begin with its type"
    [[ $(unzip -v "$odt" mimetype) == *' Stored '* ]] || fail "the type of $odt is packed"
    for part in "$work"/odt/*.xml "$work/odt/META-INF/manifest.xml"; do
        xmllint --noout "$part"
    done
    [ "$(find "$work/odt/Pictures" -name '*.png' | wc -l)" -eq "$(grep -c '<img ' "$page")" ] \
        || fail "$odt lacks pictures"
    HOME=$work soffice --headless --convert-to pdf --outdir "$work/office" "$odt" \
        >"$work/office.log" 2>&1
    pdftotext "$work/office/$(basename "${odt%.odt}").pdf" "$work/office.txt"
    has_headings "$page" "$work/office.txt"
    HOME=$work soffice --headless --convert-to html --outdir "$work/office" "$odt" \
        >>"$work/office.log" 2>&1
    [ "$(grep -ciE '<h[12][ >]' "$work/office/$(basename "${odt%.odt}").html")" \
        -ge "$(grep -cE '^<h[23]>' "$page")" ] || fail "LibreOffice takes headings for paragraphs"
}

# The page has a row that begins with these cells: row_is PAGE TEXT...
row_is() {
    local page=$1 row
    shift
    row=$(printf '<td[^>]*>%s</td>' "$@")
    grep -qE "^<tr>$row" "$page" || fail "$page has no row that begins with $*"
}

# The MED of each level: check_meds PAGE TABLE_OF_PAGE_4
check_meds() {
    local page=$1 levels meds place
    IFS=, read -ra levels < <(sed -n 1p "$2")
    IFS=, read -ra meds < <(sed -n 2p "$2")
    for place in $(seq $((${#levels[@]} - 1))); do
        row_is "$page" "${levels[place]}" "${meds[place]/nan/none}"
    done
}

# In how many data sets each level has each dose: check_distribution PAGE TABLE_OF_PAGE_4
check_distribution() {
    local page=$1 counts
    while read -ra counts; do
        row_is "$page" "${counts[@]}"
    done < <(awk -F, '
        NR > 1 { for (i = 2; i <= NF; i++) count[$i, i]++ }
        END {
            for (dose = 0; dose <= 11; dose++) {
                name = (dose > 10 ? "nan" : sprintf("%g", dose / 10))
                printf "%s", (dose > 10 ? "none" : name)
                for (i = 2; i <= NF; i++) printf " %d", count[name, i]
                print ""
            }
        }' "$2")
}

# How doses compare with the truth: check_truth PAGE COUNTS_OF_PAGE_5
check_truth() {
    local page=$1 level nominal over upTo all
    while IFS=, read -r level nominal over upTo all; do
        row_is "$page" "$level" "$over" $((upTo - over)) $((all - upTo)) "$upTo" "$nominal"
    done < <(tail -n +2 "$2")
}

check_numbers() {
    local page=$1 folder=$2 curve=$3 dose probability file
    tail -n +2 "$folder/$curve" | while IFS=, read -r dose probability; do
        row_is "$page" "$(awk "BEGIN { printf \"%.6g\", $dose }")" \
            "$(awk "BEGIN { printf \"%.6g\", $probability }")"
    done
    for file in "${@:4}"; do
        grep -q ">$(sha256sum "$file" | cut -d ' ' -f 1)</td>" <(sed 's/<wbr\/>//g' "$page") \
            || fail "$page has no hash of $file"
    done
}

for study in biomarker simulation; do
    report=$work/tour/$study/report
    check_html "$report.html"
    check_pdf "$report.html" "$report.pdf"
    check_odt "$report.html" "$report.odt"
    ls -s "$report".*
done
check_numbers "$work/tour/biomarker/report.html" "$work/tour/biomarker" \
    3-probability-average-without-eta.csv examples/biomarker/*.csv
check_numbers "$work/tour/simulation/report.html" "$work/tour/simulation" \
    3-probability-data-set-0.csv examples/simulation/raw_results_*.csv \
    examples/simulation/true_models.csv
check_meds "$work/tour/biomarker/report.html" \
    "$work/tour/biomarker/4-dose-choice-average-without-eta.csv"
check_distribution "$work/tour/simulation/report.html" "$work/tour/simulation/4-dose-choice.csv"
check_truth "$work/tour/simulation/report.html" \
    "$work/tour/simulation/5-counts-by-true-models.csv"
echo "The reports are good."
