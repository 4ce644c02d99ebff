#!/bin/sh
# SPDX-License-Identifier: MIT
# The state of a Slurm job, as Snakemake wants it: success, failed or running. scontrol knows jobs for some minutes after
# their end, sacct knows all where there is accounting. A job that both have forgotten counts as failed and is repeated;
# without an answer of the controller it counts as running.
answer=$(scontrol --oneliner show job "$1" 2>&1)
state=$(printf '%s\n' "$answer" | sed -n 's/.* JobState=\([A-Z_]*\).*/\1/p')
if [ -z "$state" ]; then
    case $answer in *"Invalid job id"*) ;; *) echo running; exit ;; esac
    state=$(sacct --jobs "$1" --format State --noheader --allocations 2>/dev/null | awk 'NR == 1 { print $1 }')
fi
case $state in
    COMPLETED) echo success ;;
    PENDING | RUNNING | CONFIGURING | COMPLETING | SUSPENDED | REQUEUED | RESIZING) echo running ;;
    *) echo failed ;;
esac
