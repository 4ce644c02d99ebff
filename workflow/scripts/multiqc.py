# SPDX-License-Identifier: MIT
"""One MultiQC page. The folders are too many for a shell's command line, so the programs are started from here."""

import os
import subprocess

from made import claim

task = snakemake  # type: ignore # noqa: F821 - Snakemake gives it
os.environ["PATH"] = os.pathsep.join([task.params.programs, os.environ["PATH"]])
folder = os.path.dirname(task.output[0])
for path in (task.output[0], os.path.join(folder, "multiqc_data"), task.params.data, task.log[0]):
    claim(path)
results = [plate for plate in task.params.results if os.path.isdir(plate)]
summary = ["lanetools", "summary", *results, "--format", "multiqc", "-o", task.params.data]
page = ["multiqc", "--force", "--outdir", folder, task.params.data]
with open(task.log[0], "w", encoding="utf-8") as log:
    code = subprocess.run(summary, stdout=log, stderr=log, check=False).returncode
    if code not in (0, 3):
        raise SystemExit(code)
    subprocess.run(page, stdout=log, stderr=log, check=True)
