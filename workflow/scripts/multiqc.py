# SPDX-License-Identifier: MIT
"""One MultiQC page. The folders are too many for a shell's command line, so the programs are started from here."""

import os
import subprocess

task = snakemake  # type: ignore # noqa: F821 - Snakemake gives it
os.environ["PATH"] = os.pathsep.join([task.params.programs, os.environ["PATH"]])
results = [folder for folder in task.params.results if os.path.isdir(folder)]
summary = ["lanetools", "summary", *results, "--format", "multiqc", "-o", task.params.data]
page = ["multiqc", "--force", "--outdir", os.path.dirname(task.output[0]), task.params.data]
with open(task.log[0], "w", encoding="utf-8") as log:
    code = subprocess.run(summary, stdout=log, stderr=log, check=False).returncode
    if code not in (0, 3):
        raise SystemExit(code)
    subprocess.run(page, stdout=log, stderr=log, check=True)
