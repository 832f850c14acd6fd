#!/usr/bin/env bash
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs the simulation study in shards with examples/cluster/gnu-parallel.sh, kills a shard while
# it runs, starts again, and compares the results with those of one run, all in build/cluster.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# shellcheck source=packaging/build-steps.sh
source packaging/build-steps.sh
ensure_packages packaging/debian-packages.txt
ensure_packages packaging/cluster-packages.txt
build_preset dev velmora-batch

folder=$PWD/build/cluster
examples=$PWD/examples
rm -rf "$folder"
mkdir -p "$folder"
export PATH=$PWD/build/dev:$PATH LC_ALL=C.UTF-8
options=(--folder "$examples/simulation" --doses 0:0.1:1 --levels 10:10:90 --lower 0.4
    --endpoint '0=THETA2*DOSE' --endpoint '1=THETA2*DOSE/(THETA3+DOSE)+ETA1'
    --endpoint '2=THETA2*DOSE+THETA3*DOSE^2' --omega '1=COL24' --individuals 4000
    --random-position 1234567 --endpoints --true-models "$examples"/simulation/raw_results_sim*
    --true-model-numbers "$examples/simulation/true_models.csv" --report html)
velmora-batch "${options[@]}" --quiet --output "$folder/whole"

# Kills the second of four shards when it has begun to write.
"$examples/cluster/gnu-parallel.sh" "$folder/parts" 4 "${options[@]}" 2>"$folder/killed.txt" &
script=$!
until compgen -G "$folder/parts/shards/1/*" >"$folder/begun.txt"; do
    kill -0 "$script"
    sleep 0.01
done
kill -KILL "$(pgrep -fx "velmora-batch .*$folder/parts/shards/1 .*")"
if wait "$script" || [ -e "$folder/parts/results" ]; then
    echo "A shard was killed, and nobody noticed." >&2
    exit 1
fi
[ ! -e "$folder/parts/shards/1/run.json" ] && [ -e "$folder/parts/shards/0/run.json" ]

# Starts again, which keeps the complete shards and calculates the others.
before=$(stat -c %y "$folder/parts/shards/0/run.json")
"$examples/cluster/gnu-parallel.sh" "$folder/parts" 4 "${options[@]}"
[ "$before" = "$(stat -c %y "$folder/parts/shards/0/run.json")" ]
sed -i "/\"seconds\":/d" "$folder"/{whole,parts/results}/run.json
sed -i 's/20[0-9]*-[0-9]*-[0-9]*[T ][0-9:]*//g' "$folder"/{whole,parts/results}/report.html
diff -r "$folder/whole" "$folder/parts/results"
echo "A shard was killed and calculated again; the merged results equal those of one run."
