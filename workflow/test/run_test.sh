#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# run_test.sh PROGRAMS: the workflow with four small plates, on this machine and on a trial cluster. PROGRAMS is the folder
# of lanewright, lanetools and samplegen. Takes about a minute; leaves neither processes nor files.
set -euo pipefail
programs=$(realpath "$1")
workflow=$(realpath "$(dirname "$0")/..")

fail() {
    echo "run_test.sh: $*" >&2
    for log in log slurm/.snakemake/slurm/*.log cluster/slurmctld.log; do
        [ ! -s "$log" ] || { echo "--- $log"; tail -n 60 "$log"; } >&2
    done
    exit 1
}

# Like the scripts of this tree: as root, or through sudo.
if [ "$(id -u)" -ne 0 ] && sudo -n true 2>/dev/null; then exec sudo -n env PATH="$PATH" "$0" "$@"; fi
[ "$(id -u)" -eq 0 ] || fail "only root can start the daemons of a trial cluster"
for program in snakemake slurmctld slurmd sbatch munged multiqc; do
    command -v "$program" >/dev/null || fail "$program is missing: see the packages in scripts/test"
done

work=$(mktemp -d)
started=
clean_up() {
    if [ -n "$started" ]; then kill "$started" 2>/dev/null || true; fi
    "$workflow/test/cluster.sh" stop "$work/cluster" || true
    if [ -n "$started" ]; then wait "$started" || true; fi
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 1' INT TERM
chmod 755 "$work"  # the cluster's daemons refuse a folder that is closed to others
cd "$work"
# CI: Snakemake looks after its jobs each second instead of each ten.
export CI=true XDG_CACHE_HOME=$work/cache PYTHONDONTWRITEBYTECODE=1

# Starts the workflow in the folder $1 with the profile $2, and goes on; more settings follow.
launch() {
    local folder=$1 profile=$2
    shift 2
    timeout --kill-after 20 100 snakemake --directory "$folder" --snakefile "$workflow/Snakefile" \
        --configfile "$work/settings.yaml" --profile "$workflow/profiles/$profile" "$@" >log 2>&1 &
    started=$!
}

finish() {
    local code=0
    wait "$started" || code=$?
    started=
    return "$code"
}

run() {
    launch "$@"
    finish
}

expect() {
    grep -q -e "$1" log || fail "the log lacks: $1"
}

mkdir -p a b c local slurm broken
seed=0
for plate in a/plate1 b/plate1 c/plate3 c/plate4; do
    seed=$((seed + 1))
    "$programs/samplegen" "$plate" --plate "${plate#*/}" --wells 8 --bases 60 --seed "$seed" >/dev/null
done
cp c/plate4/plate4A03.rsd good.rsd
truncate --size 3000 c/plate4/plate4A03.rsd
cat >settings.yaml <<SETTINGS
plates: [$work/a/plate1, $work/b/plate1, $work/c/plate3, $work/c/plate4]
programs: $programs
SETTINGS
"$programs/lanetools" report --help >/dev/null 2>&1 || echo "report: false" >>settings.yaml  # built without pages

echo "A key that does not exist"
! run local local --config swiches=-BC || fail "an unknown key was taken"
expect "'swiches' was unexpected"

echo "On this machine"
! run local local || fail "a plate with a damaged sample passed"
expect "Plate plate4 did not pass: 7 of 8 samples called"
[ "$(grep -c 'did not pass: ' log)" -eq 1 ] || fail "other plates did not pass"
[ "$(find local/out -path '*/plate1-*/called/plate1_LC1_QX1' | wc -l)" -eq 2 ] || fail "two plates of one name share a folder"

echo "On a cluster, where a job is killed, and a step of a plate breaks down"
cat >broken/lanetools <<BROKEN
#!/bin/sh
case "\$*" in export*plate3*) exit 1 ;; esac
exec "$programs/lanetools" "\$@"
BROKEN
chmod +x broken/lanetools
"$workflow/test/cluster.sh" start cluster
export SLURM_CONF=$work/cluster/slurm.conf
launch slurm slurm --config programs="$work/broken" --group-components plate=2 --latency-wait 5
until job=$(squeue --noheader --states running --format %A | head -n 1) && [ -n "$job" ]; do
    kill -0 "$started" 2>/dev/null || fail "no job was started"
    sleep 0.2
done
scancel "$job"
! finish || fail "a plate with a damaged sample passed on the cluster"
expect "Trying to restart job"
expect "Plate plate3 did not pass: export-fastq broke down with code 1"
expect "Plate plate4 did not pass: 7 of 8 samples called"
[ "$(grep -c 'did not pass: ' log)" -eq 2 ] || fail "a failing plate took others with it"

echo "The next start does what is left, and the results are the same"
! run slurm local || fail "a plate with a damaged sample passed at the next start"
expect "^export  *1 "
! grep -q "^call " log || fail "a plate was called again"
diff -r --exclude='*.log' local/out slurm/out || fail "the results differ"

echo "A plate is repaired"
mv good.rsd c/plate4/plate4A03.rsd
run local local --config multiqc=True || fail "the repaired plate did not pass"
expect "^call  *1 "
[ -s local/out/multiqc_report.html ] || fail "there is no page by MultiQC"

echo "Files of an instrument"
mkdir instrument
for name in 310 3100; do gunzip -c "/usr/share/doc/python-biopython-doc/Tests/Abi/$name.ab1.gz" >"instrument/$name.ab1"; done
echo "no chromatogram" >instrument/damaged.ab1
! run local local --config import=True "plates=['$work/instrument']" output=imported || fail "a damaged file was no loss"
expect "Plate instrument did not pass: 2 of 3 samples called"
