#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A Slurm cluster on this one machine, for trials and tests, without systemd: cluster.sh start|stop DIR. All that it writes
# lies in DIR; use it with SLURM_CONF=DIR/slurm.conf. Two nodes of one processor each. Needs root, and Debian's
# slurmctld, slurmd, slurm-client and munge.
set -euo pipefail

action=${1:?start or stop}
mkdir -p "${2:?folder}"
dir=$(realpath "$2")
export SLURM_CONF=$dir/slurm.conf

# The first of three ports in a row on which nobody listens.
free_ports() {
    local first port
    while :; do
        first=$((20000 + RANDOM % 20000))
        for port in "$first" $((first + 1)) $((first + 2)); do
            if (: <>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; then continue 2; fi
        done
        echo "$first"
        return
    done
}

write_settings() {
    local host port
    host=$(hostname -s)
    port=$(free_ports)
    cat >"$SLURM_CONF" <<CONF
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
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
SchedulerParameters=batch_sched_delay=0
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
ReturnToService=1
SlurmdTimeout=20
KillWait=2
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
    slurmctld -f "$SLURM_CONF"
    slurmd -N node1 -f "$SLURM_CONF"
    slurmd -N node2 -f "$SLURM_CONF"
    local tries
    for tries in $(seq 120); do
        [ "$(sinfo --noheader --Node --format %T 2>/dev/null | grep -c idle)" -eq 2 ] && return
        sleep 0.5
    done
    echo "cluster.sh: the nodes are not up after $((tries / 2)) s; see the logs in $dir" >&2
    exit 1
}

# In a container, nobody may care for processes that have ended.
is_alive() {
    [ -e "/proc/$1" ] && ! grep -q '^State:.Z' "/proc/$1/status" 2>/dev/null
}

# Ends a daemon, in the hard way when it takes more than five seconds.
end() {
    local tries
    kill "$1" 2>/dev/null || return 0
    for tries in $(seq 50); do
        is_alive "$1" || return 0
        sleep 0.1
    done
    echo "cluster.sh: process $1 is killed after $((tries / 10)) s" >&2
    kill -KILL "$1" 2>/dev/null || true
}

stop() {
    local pid_file tries
    # Jobs would outlive the daemons.
    timeout 10 scancel --user="$(id -un)" 2>/dev/null || true
    for tries in $(seq 20); do
        [ -n "$(timeout 10 squeue --noheader 2>/dev/null)" ] || break
        [ "$tries" -lt 20 ] || echo "cluster.sh: jobs are left" >&2
        sleep 0.5
    done
    for pid_file in "$dir"/slurmd-node?.pid "$dir/slurmctld.pid" "$dir/munge/pid"; do
        if [ -e "$pid_file" ]; then end "$(cat "$pid_file")"; fi
    done
}

if [ "$(id -u)" -ne 0 ]; then
    echo "cluster.sh: a trial cluster can be started and stopped by root only" >&2
    exit 1
fi
case $action in
    start) start ;;
    stop) stop ;;
    *) echo "cluster.sh: start or stop" >&2; exit 2 ;;
esac
