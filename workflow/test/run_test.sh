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

# Settings $2... that would endanger what exists are refused before anything starts, with the text $1, and change nothing.
refused() {
    local text=$1 before
    shift
    before=$(find a b c data theirs -exec stat -c '%n %s %Y' {} + -type f -exec sha256sum {} +)
    ! run local "$profile" --config "$@" || fail "these settings were taken: $*"
    expect "^Settings: .*$text"
    [ "$before" = "$(find a b c data theirs -exec stat -c '%n %s %Y' {} + -type f -exec sha256sum {} +)" ] ||
        fail "files were changed with these settings: $*"
}

mkdir -p a b c local slurm broken scratch
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

echo "Folders and files that belong to others"
mkdir -p data/p1/called data/x theirs/{plate1,plate3,page/plate4}
cp -R a/plate1 data/x/raw
cp a/plate1/*.rsd data/p1
echo own | tee data/p1/called/own theirs/page/plate4/fastq theirs/page/plates.html >theirs/page/plate4/called.part
ln -s "$work/data/x/raw" theirs/plate3/called
ln -s "$work/data" link
printf 'path\tname\n%s\tx\n' "$work/data/x/raw" >sheet.tsv
printf 'path\tname\n%s\tpassed\n' "$work/a/plate1" >passed.tsv
cp -R data/p1/called theirs/plate1/fastq
for profile in local slurm; do
    refused "data contains $work/data/x/raw" import=True "plates=$work/sheet.tsv" "output=$work/data"
    refused "data contains $work/data/p1" "plates=['$work/data/p1']" "output=$work/data"
    refused "theirs/plate1/fastq exists and was not made by this workflow" "plates=['$work/a/plate1']" "output=$work/theirs" \
        'export_options=[]'
done
profile=local
refused "link/ contains $work/data/x/raw" "plates=['$work/data/x/raw']" "output=$work/link/"
refused "called is $work/data/x/raw itself" "plates=['$work/data/x/raw','$work/c/plate3']" "output=$work/theirs"
refused "p1/called/out is inside $work/data/p1" "plates=['$work/link/p1']" "output=$work/data/p1/called/out"
refused "plates.html exists .*2 more" "plates=['$work/c/plate4']" "output=$work/theirs/page" scratch="$work/scratch"
refused "a/plate1 has the name of a file of the workflow" "plates=$work/passed.tsv" "output=$work/local/out"

echo "On this machine"
! run local local || fail "a plate with a damaged sample passed"
expect "Plate plate4 did not pass: 7 of 8 samples called"
[ "$(grep -c 'did not pass: ' log)" -eq 1 ] || fail "other plates did not pass"
[ "$(find local/out -path '*/plate1-*/called/plate1_LC1_QX1' | wc -l)" -eq 2 ] || fail "two plates of one name share a folder"

echo "On a cluster, where a job is killed, and a folder of the user turns up where a plate is exported to"
cat >broken/lanetools <<BROKEN
#!/bin/sh
case "\$*" in run*plate3*) mkdir -p "$work/slurm/out/plate3/fastq" && echo own >"$work/slurm/out/plate3/fastq/own" ;; esac
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

! run slurm local || fail "a folder of the user was taken at the next start"
expect "^Settings: out/plate3/fastq exists and was not made by this workflow"
grep -q own slurm/out/plate3/fastq/own || fail "a folder of the user was removed"
rm -r slurm/out/plate3/fastq

echo "The next start does what is left, and the results are the same"
! run slurm local || fail "a plate with a damaged sample passed at the next start"
expect "^export  *1 "
! grep -q "^call " log || fail "a plate was called again"
diff -r --exclude='*.log' --exclude=made.stamp local/out slurm/out || fail "the results differ"

echo "A plate is repaired, in an output that an earlier version has made"
find local/out -name made.stamp -delete
mv good.rsd c/plate4/plate4A03.rsd
run local local --config multiqc=True scratch="$work/scratch" || fail "the repaired plate did not pass"
expect "^call  *1 "
rmdir scratch || fail "the scratch folder is not empty"
[ -s local/out/multiqc_report.html ] || fail "there is no page by MultiQC"

echo "Files of an instrument"
mkdir instrument
for name in 3100 3730; do gunzip -c "/usr/share/doc/python-biopython-doc/Tests/Abi/$name.ab1.gz" >"instrument/$name.ab1"; done
echo "no chromatogram" >instrument/damaged.ab1
! run local local --config import=True "plates=['$work/instrument']" output=imported || fail "a damaged file was no loss"
expect "Plate instrument did not pass: 2 of 3 samples called"
