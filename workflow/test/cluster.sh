#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A Slurm cluster on this one machine, for trials and tests, without systemd: cluster.sh start|stop DIR. All that it writes
# lies in DIR; use it with SLURM_CONF=DIR/slurm.conf. Two nodes of one processor each. Needs root, and Debian's
# slurmctld, slurmd, slurm-client and munge.
set -euo pipefail

action=${1:?start or stop}
mkdir -p "${2:?folder}"
dir=$(realpath "$2")

write_settings() {
    local host port
    host=$(hostname -s)
    # Ports of its own, so that clusters in several folders do not meet.
    port=$((20000 + $(cksum <<<"$dir" | cut -d' ' -f1) % 20000))
    cat >"$dir/slurm.conf" <<CONF
ClusterName=trial
SlurmctldHost=$host(127.0.0.1)
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$dir/munge/socket
CredType=cred/munge
SlurmctldPort=$port
StateSaveLocation=$dir/state
SlurmdSpoolDir=$dir/spool-%n
SlurmctldPidFile=$dir/slurmctld.pid
SlurmdPidFile=$dir/slurmd-%n.pid
SlurmctldLogFile=$dir/slurmctld.log
SlurmdLogFile=$dir/slurmd-%n.log
ProctrackType=proctrack/pgid
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
ReturnToService=2
SlurmdTimeout=20
MinJobAge=300
NodeName=node1 NodeHostname=$host NodeAddr=127.0.0.1 Port=$((port + 1)) CPUs=1 RealMemory=2000
NodeName=node2 NodeHostname=$host NodeAddr=127.0.0.1 Port=$((port + 2)) CPUs=1 RealMemory=2000
PartitionName=trial Nodes=node1,node2 Default=YES MaxTime=INFINITE State=UP
CONF
}

start() {
    mkdir -p "$dir"/{munge,state,spool-node1,spool-node2}
    # munge refuses folders that others may write to, and a socket in a folder that others cannot enter.
    chmod 755 "$dir" "$dir/munge"
    [ -e "$dir/munge/key" ] || (umask 077 && dd if=/dev/urandom of="$dir/munge/key" bs=1024 count=1 status=none)
    munged --force --key-file="$dir/munge/key" --socket="$dir/munge/socket" --pid-file="$dir/munge/pid" \
        --log-file="$dir/munge/log" --seed-file="$dir/munge/seed"
    write_settings
    export SLURM_CONF=$dir/slurm.conf
    slurmctld -f "$SLURM_CONF"
    slurmd -N node1 -f "$SLURM_CONF"
    slurmd -N node2 -f "$SLURM_CONF"
    local tries
    for tries in $(seq 60); do
        [ "$(sinfo --noheader --Node --format %T 2>/dev/null | grep -c idle)" -eq 2 ] && return
        sleep 0.5
    done
    echo "cluster.sh: the nodes are not up after $((tries / 2)) s; see the logs in $dir" >&2
    exit 1
}

stop() {
    local pid_file pid
    for pid_file in "$dir"/slurmd-node?.pid "$dir/slurmctld.pid" "$dir/munge/pid"; do
        [ -e "$pid_file" ] || continue
        pid=$(cat "$pid_file")
        kill "$pid" 2>/dev/null || continue
        while kill -0 "$pid" 2>/dev/null; do sleep 0.1; done
    done
}

case $action in
    start) start ;;
    stop) stop ;;
    *) echo "cluster.sh: start or stop" >&2; exit 2 ;;
esac
