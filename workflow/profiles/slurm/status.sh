#!/bin/sh
# SPDX-License-Identifier: MIT
# The state of a Slurm job, as Snakemake wants it: success, failed or running. scontrol knows jobs for some minutes after
# their end, sacct knows all where there is accounting.
state=$(scontrol --oneliner show job "$1" 2>/dev/null | sed -n 's/.* JobState=\([A-Z_]*\).*/\1/p')
[ -n "$state" ] || state=$(sacct --jobs "$1" --format State --noheader --allocations 2>/dev/null | awk 'NR == 1 { print $1 }')
case $state in
    COMPLETED) echo success ;;
    # Slurm itself starts a job again whose node was lost.
    PENDING | RUNNING | CONFIGURING | COMPLETING | SUSPENDED | REQUEUED | RESIZING | "") echo running ;;
    *) echo failed ;;
esac
