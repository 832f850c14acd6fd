#!/bin/sh
# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Calculates a study in shards, each in a task of a Slurm job array:
#     sbatch slurm.sh FOLDER SHARDS OPTION...
# Submit it again with the same command to continue where it stopped.
#SBATCH --cpus-per-task=1 --mem=1G
set -eu
FOLDER=$1 SHARDS=$2
shift 2

if [ -z "${SLURM_ARRAY_TASK_ID:-}" ]; then
    # 1. Write the plan: all options, hashes of all files, numbers of random draws of all data sets.
    mkdir -p "$FOLDER/shards"
    [ -e "$FOLDER/plan.json" ] || velmora-batch "$@" --plan "$FOLDER/plan.json"
    sbatch --wait --array="0-$((SHARDS - 1))" "$0" "$FOLDER" "$SHARDS"

    # 3. Merge the shards.
    exec velmora-batch merge "$FOLDER"/shards/* --resume --output "$FOLDER/results"
fi

# 2. Calculate a shard.
data_sets=$(sed -n 's/^ *"data_sets": \([0-9]*\),$/\1/p' "$FOLDER/plan.json")
first=$((SLURM_ARRAY_TASK_ID * data_sets / SHARDS))
end=$(((SLURM_ARRAY_TASK_ID + 1) * data_sets / SHARDS))
exec velmora-batch --settings "$FOLDER/plan.json" --plan "$FOLDER/plan.json" --quiet --resume \
    --output "$FOLDER/shards/$SLURM_ARRAY_TASK_ID" --data-sets "$first:$end"
