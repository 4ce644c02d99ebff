#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The reader of sample files in Python: damaged copies of the seeds give a sample or ValueError, and nothing else.

    PythonReader.py FOLDER-OF-SEEDS|FILE [--cases N | --seconds N] [--kept FILE]

Without --seconds it tries the same copies in every run. A copy on which the reader fails is written to FILE.
"""

import argparse
import itertools
import pathlib
import random
import sys
import time

import numpy as np

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "python"))
from lanewright import Sample  # noqa: E402
from lanewright.sample import parse  # noqa: E402


def damaged(seed, chance):
    """A copy with bytes changed, doubled, taken out or cut off. Damage in the tree and in the trailer reaches most."""
    data = bytearray(seed)
    for _ in range(chance.randint(0, 6)):
        at = chance.randrange(len(data)) if data else 0
        what = chance.randrange(8)
        if what == 0:
            del data[at : at + chance.randint(1, 8)]
        elif what == 1:
            data[at:at] = data[at : at + chance.randint(1, 40)]
        elif data:
            data[at] = chance.choice((0, 1, 255, data[at] ^ 1 << chance.randrange(8), chance.randrange(256)))
    return bytes(data[: chance.randrange(len(data) + 1)] if chance.randrange(8) == 0 else data)


def check(data, checksum):
    """Reads the bytes; what comes out must be whole."""
    try:
        sample = parse(data, checksum)
    except ValueError as error:
        assert str(error), "a refusal without a reason"
        return
    assert isinstance(sample, Sample) and isinstance(sample.error, str)
    assert sample.channels.shape == (4, len(sample.current)), "the channels have other scans than the current"
    bases = sample.bases
    assert isinstance(bases.letters, str) and len(bases) == len(bases.positions) == len(bases.qualities)
    assert bases.positions.dtype == np.int32 and bases.qualities.dtype == np.float32


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("seeds", type=pathlib.Path)
    parser.add_argument("--cases", type=int, default=20000)
    parser.add_argument("--seconds", type=float)
    parser.add_argument("--kept", type=pathlib.Path, default=pathlib.Path("PythonReader.input"))
    options = parser.parse_args()
    seeds = [path.read_bytes() for path in (sorted(options.seeds.iterdir()) if options.seeds.is_dir() else [options.seeds])]
    chance = random.Random() if options.seconds else random.Random(20240607)
    end = time.monotonic() + (options.seconds or 0)
    done = 0
    for case in itertools.count() if options.seconds else range(options.cases):
        if options.seconds and time.monotonic() > end:
            break
        data = seeds[case] if case < len(seeds) else damaged(chance.choice(seeds), chance)
        try:
            check(data, checksum=False)
            check(data, checksum=True)
        except Exception:
            options.kept.write_bytes(data)
            print(f"PythonReader: fails on {options.kept}", file=sys.stderr)
            raise
        done += 1
    print(f"Done {done} runs, {len(seeds)} seeds")
    return 0 if seeds else 1


if __name__ == "__main__":
    sys.exit(main())
