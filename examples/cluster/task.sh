#!/bin/sh
# A job of submit.sh: a task of the array calculates a shard of the study; the last job puts the tables together.
set -eu
root=$1 tasks=$2 table=$3
shift 3
# Nodes do not share a Wine prefix.
export WINEPREFIX="${TMPDIR:-/tmp}/solvane-$SLURM_JOB_ID"
trap 'wineserver -k || true; rm -rf "$WINEPREFIX"' EXIT
"$root/scripts/prefix"
host() {
    "$root/scripts/wine" "$root/build/win64/bin/SolvaneHost.exe" "$@"
}
parts=${table%.csv}-part
if [ -n "${SLURM_ARRAY_TASK_ID:-}" ]; then
    host sweep "$@" --shard "$SLURM_ARRAY_TASK_ID/$tasks" --jobs "${SLURM_CPUS_PER_TASK:-1}" \
        --csv "$parts$SLURM_ARRAY_TASK_ID.csv" --resume
else
    host sweep merge "$table" "$parts"*.csv
fi
