#!/bin/sh
# Usage: submit.sh TASKS TABLE.csv CASE.json OPTION...
#
# Calculates a study on a cluster with Slurm: a job array with that many tasks, each of which calculates a shard, and
# after it a job that puts their tables together as TABLE.csv. The options are those of "SolvaneHost sweep", such as
# --vary. The nodes share this folder, built by ./run, and the current one.
#
# Each task uses the processors that it gets; sbatch reads more from variables, such as SBATCH_PARTITION,
# SBATCH_TIMELIMIT or SBATCH_CPUS_PER_TASK. Submitted again, a study goes on where its tasks have ended.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
needs=4
. "$root/scripts/help"
tasks=$1 table=$2
shift 2
task="$root/examples/cluster/task.sh"
array=$(sbatch --parsable --job-name=study --array="1-$tasks" "$task" "$root" "$tasks" "$table" "$@")
echo "The tasks are job ${array%%;*}."
merge=$(sbatch --parsable --job-name=merge --dependency="afterany:${array%%;*}" "$task" "$root" "$tasks" "$table")
echo "Their tables become $table in job ${merge%%;*}."
