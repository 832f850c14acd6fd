#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Reads the files of the tour with tools/velmora.R and tools/velmora.py, compares both with each
# other and with a plain reader, and runs the code and the batch commands of the user guide, all
# in build/tools.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
ensure_packages packaging/tools-packages.txt
build_preset dev velmora-tour velmora-batch

folder=$PWD/build/tools
rm -rf "$folder"
mkdir -p "$folder"
build/dev/velmora-tour examples "$folder" >"$folder/tour.txt"
head -c 3000000 "$folder/simulation.velmora" >"$folder/cut.velmora"
# The bytes of the documented example, and the same with commas as the name of its column "ofv".
bytes=$(sed -n 's/^| [0-9]* | \(`[^|]*\).*/\1/p' docs/project-file.md | tr -cd '0-9a-f')
perl -e 'print pack "H*", shift' "$bytes" >"$folder/documented.velmora"
perl -e 'print pack "H*", shift' "${bytes/0022006f006600760022/002c002c002c002c002c}" \
    >"$folder/unnamed.velmora"
printf '%s\r\n' 'data_set,model,sample,dose,endpoint,weight,selected,in_target' \
    '0,"emax, ""ä""",0,0.10000000000000001,0.41666666666666669,0.25,0,1' \
    '0,NA,0,0.10000000000000001,NA,0.75,1,0' '0,"emax, ""ä""",1,1e-300,-Inf,NA,0,0' \
    '19,NA,1,3,Inf,1,1,1' >"$folder/unusual-endpoints.csv"

# Numbers must not depend on the language of the desktop; names are UTF-8.
export LC_ALL=C.UTF-8 PYTHONDONTWRITEBYTECODE=1
mapfile -t files < <(find "$folder" -name '*.velmora' -o -name '*endpoints.csv')
Rscript --vanilla tests/tools.R "${files[@]}"
/usr/bin/python3 tests/tools.py "$folder" "${files[@]}" # the one with Debian's NumPy

# The commands and the code of the guide, in a folder with its studies.
plots=$folder/plots
mkdir "$plots"
cp tools/velmora.R tools/velmora.py "$plots"
ln -s "$PWD/examples/biomarker" "$PWD/examples/simulation" "$plots"
cp "$folder/biomarker.velmora" "$plots/study.velmora"
cp "$folder/biomarker/3-endpoints.csv" "$plots/endpoints.csv"
for language in r python json; do
    awk -v begin="\`\`\`$language" '/^```/ { isCode = $0 == begin; next } isCode' \
        docs/user-guide.md >"$plots/plot.$language"
done
awk '!/^    / { isCommand = 0 } /^    velmora-batch / { isCommand = 1 } isCommand' \
    docs/user-guide.md >"$plots/commands.sh"
PATH=$PWD/build/dev:$PATH
cd "$plots"
mv plot.json study.json
sh -e commands.sh 2>findings.txt
for table in simulated/*.*; do
    [ "$table" = simulated/run.json ] || cmp "$table" "again/${table#*/}"
    [ "$table" = simulated/run.json ] || cmp "$table" "whole/${table#*/}"
done
Rscript --vanilla plot.r
MPLBACKEND=agg /usr/bin/python3 plot.python
[ -s contributions.png ] && [ -s effects.png ]
echo "Both readers agree with the files; the plots and the commands' results are in $plots."
