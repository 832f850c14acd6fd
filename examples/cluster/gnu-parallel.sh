#!/bin/sh
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# A study in shards, as many at a time as this machine has processors:
#     gnu-parallel.sh FOLDER SHARDS OPTION...
# Started again with the same words, it goes on where it stopped.
set -eu
FOLDER=$1 SHARDS=$2
shift 2

# 1. The plan: all options, hashes of all files, random numbers of all data sets.
mkdir -p "$FOLDER/shards"
[ -e "$FOLDER/plan.json" ] || velmora-batch "$@" --plan "$FOLDER/plan.json"
data_sets=$(sed -n 's/^ *"data_sets": \([0-9]*\),$/\1/p' "$FOLDER/plan.json")

# 2. Each shard: its number, its first data set, and the one behind its last.
for shard in $(seq 0 $((SHARDS - 1))); do
    echo "$shard $((shard * data_sets / SHARDS)) $(((shard + 1) * data_sets / SHARDS))"
done | parallel --colsep ' ' --quote velmora-batch --settings "$FOLDER/plan.json" \
    --plan "$FOLDER/plan.json" --quiet --resume --output "$FOLDER/shards/{1}" --data-sets '{2}:{3}'

# 3. The whole.
exec velmora-batch merge "$FOLDER"/shards/* --resume --output "$FOLDER/results"
