# SPDX-License-Identifier: MIT
"""Reads the sample files of a capillary sequencing system: raw (.rsd), processed (.esd) and failed (.fsd) ones.

    sample = lanewright.read("plate1_LC1_QX1/run1A02.esd")
    sample.channels        # 4 x scans
    sample.bases.letters   # "GGAGATTGCG..."
    sample.info["SAMPLE NAME"]
"""

from lanewright.sample import Bases, Sample, read

__all__ = ["Bases", "Sample", "read"]
__version__ = "1.1.0"
