# Sourced: a Slurm of the caller's own on this machine, without a right that the caller lacks.

# Whether Slurm's programs are installed, as by the packages slurmctld, slurmd, slurm-client and munge.
hasSlurm() {
    command -v munged && command -v slurmctld && command -v slurmd && command -v sbatch
} >/dev/null

# Starts it in a folder that exists; its commands are led there.
startSlurm() {
    place=$1
    mkdir "$place/state" "$place/spool"
    (umask 077 && head -c 1024 /dev/urandom >"$place/key")
    munged --force --key-file="$place/key" --seed-file="$place/seed" --socket="$place/socket" \
        --log-file="$place/munged.log" --pid-file="$place/munged.pid"
    ports=$(python3 -c 'import socket
sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(2)]
print(*(s.getsockname()[1] for s in sockets))')
    cat >"$place/slurm.conf" <<CONF
ClusterName=here
SlurmUser=$(id -un)
SlurmdUser=$(id -un)
SlurmctldHost=$(hostname -s)(127.0.0.1)
SlurmctldPort=${ports% *}
SlurmdPort=${ports#* }
CommunicationParameters=NoCtldInAddrAny,NoInAddrAny
AuthInfo=socket=$place/socket
StateSaveLocation=$place/state
SlurmdSpoolDir=$place/spool
SlurmctldPidFile=$place/slurmctld.pid
SlurmdPidFile=$place/slurmd.pid
SlurmctldLogFile=$place/slurmctld.log
SlurmdLogFile=$place/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
NodeName=$(hostname -s) NodeAddr=127.0.0.1 CPUs=$(nproc)
PartitionName=all Nodes=ALL Default=YES
CONF
    export SLURM_CONF="$place/slurm.conf"
    slurmctld && slurmd && srun true
}

# Waits until every job has ended.
waitForJobs() {
    while squeue --noheader | grep -q .; do
        sleep 1
    done
}

stopSlurm() {
    for name in slurmd slurmctld munged; do
        [ -f "$1/$name.pid" ] || continue
        process=$(cat "$1/$name.pid")
        kill "$process" || continue
        while kill -0 "$process" 2>/dev/null; do
            sleep 0.1
        done
    done
}
