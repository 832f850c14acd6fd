#!/bin/sh
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Calculates a study in shards, as many at a time as this machine has processors:
#     gnu-parallel.sh FOLDER SHARDS OPTION...
# Start it again with the same command to continue where it stopped.
set -eu
FOLDER=$1 SHARDS=$2
shift 2

# 1. Write the plan: all options, hashes of all files, numbers of random draws of all data sets.
mkdir -p "$FOLDER/shards"
[ -e "$FOLDER/plan.json" ] || velmora-batch "$@" --plan "$FOLDER/plan.json"
data_sets=$(sed -n 's/^ *"data_sets": \([0-9]*\),$/\1/p' "$FOLDER/plan.json")

# 2. Calculate each shard: its number, its first data set, and the one after its last.
for shard in $(seq 0 $((SHARDS - 1))); do
    echo "$shard $((shard * data_sets / SHARDS)) $(((shard + 1) * data_sets / SHARDS))"
done | parallel --colsep ' ' --quote velmora-batch --settings "$FOLDER/plan.json" \
    --plan "$FOLDER/plan.json" --quiet --resume --output "$FOLDER/shards/{1}" --data-sets '{2}:{3}'

# 3. Merge the shards.
exec velmora-batch merge "$FOLDER"/shards/* --resume --output "$FOLDER/results"
