#!/bin/sh
# A study as a job array: by Slurm where its programs are installed, else by a stand-in that carries out jobs at once.
#   ClusterTest.sh ROOT
set -eu
root=$1
. "$root/tests/host/slurm.sh"
folder=$(mktemp -d)
trap 'stopSlurm "$folder"; rm -rf "$folder"' EXIT
cd "$folder"

useStandIn() {
    cat >sbatch <<'SBATCH'
#!/bin/sh
# The words before the script are options; --array=1-N carries it out for each task.
set -eu
count=
while :; do
    case $1 in
    --array=1-*) count=${1#--array=1-} ;;
    --dependency=afterany:7 | --parsable | --job-name=*) ;;
    *) break ;;
    esac
    shift
done
if [ -z "$count" ]; then
    SLURM_JOB_ID=$$ "$@" >merge.log 2>&1
fi
i=1
while [ -n "$count" ] && [ "$i" -le "$count" ]; do
    SLURM_JOB_ID=$$-$i SLURM_ARRAY_TASK_ID=$i "$@" >task$i.log 2>&1 || true # a task with failed points fails
    i=$((i + 1))
done
echo "7;here"
SBATCH
    chmod +x sbatch
    PATH="$folder:$PATH"
}

if hasSlurm; then
    startSlurm "$folder"
    scheduler=Slurm
else
    useStandIn
    scheduler="a stand-in for Slurm"
fi
case="$root/models/compressor/case.json"
# The third point fails: the pressure is below that of the feed.
set -- "$case" --vary "outlet pressure=4 bar,8 bar,0.5 bar" --vary "Feed.flow=10:20:2"
"$root/examples/cluster/submit.sh" 2 "table.csv" "$@" || { cat ./*.log; exit 1; }
[ "$scheduler" != Slurm ] || waitForJobs
"$root/scripts/wine" "$root/build/win64/bin/SolvaneHost.exe" sweep "$@" --csv whole.csv 2>whole.log && exit 1
cmp table.csv whole.csv || { cat ./*.log ./*.out; exit 1; }
[ "$(wc -l <table.csv)" = 7 ] && [ "$(grep -c ,ok, table.csv)" = 4 ] &&
    echo "the shards of a job array of $scheduler give the table of a single study"
