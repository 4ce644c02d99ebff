# SPDX-License-Identifier: MIT
"""Fails when a plate did not pass; the plates are named in the log."""

import os
import sys

from made import claim
from verdicts import not_passed

task = snakemake  # type: ignore # noqa: F821 - Snakemake gives it
lines = list(not_passed(os.path.dirname(task.output[0]), task.params.plates, task.params.steps, task.params.min_pass))
claim(task.output[0])
claim(task.log[0])
with open(task.log[0], "w", encoding="utf-8") as log:
    log.writelines(line + "\n" for line in lines)
if lines:
    sys.exit(f"{len(lines)} of {len(task.params.plates)} plates did not pass")
