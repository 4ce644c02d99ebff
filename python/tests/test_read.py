# SPDX-License-Identifier: MIT
"""The reader next to the program's own text dumps, on a synthetic plate. LANEWRIGHT_BIN names the folder of the
programs."""

import os
import pathlib
import subprocess

import numpy as np
import pytest

import lanewright

BIN = pathlib.Path(os.environ["LANEWRIGHT_BIN"])


@pytest.fixture(scope="module")
def plate(tmp_path_factory):
    folder = tmp_path_factory.mktemp("plate")
    subprocess.run([BIN / "samplegen", "p1", "--plate", "run1", "--wells", "3", "--failed", "1", "--bases", "120"],
                   cwd=folder, check=True, stdout=subprocess.DEVNULL)
    (folder / "out").mkdir()
    subprocess.run([BIN / "lanewright", "-IP", "p1", "-OD", "out", "-RAW_TXT", "-BC", "-PROC_TXT"], cwd=folder,
                   check=True, stdout=subprocess.DEVNULL, env={**os.environ, "TZ": "UTC"})
    return folder


def dump_of(path):
    """Labels and values, letters, and table of a text dump."""
    text = path.read_bytes().decode("latin-1").replace("\r\n", "\n")
    head, _, table = text.partition("Scan\t")
    rows = [[int(cell) for cell in line.split("\t\t")] for line in table.splitlines()[2:]]
    labels = dict(line.split(" : ", 1) for line in head.splitlines() if " : " in line)
    letters = head.partition("Sequence :\n")[2].replace("\n", "") if "\nSequence :" in head else ""
    return labels, letters, np.array(rows)


def check(sample, dump, factor):
    labels, letters, table = dump_of(dump)
    assert np.array_equal(table[:, 0], np.arange(sample.channels.shape[1]))
    assert np.array_equal(table[:, 1:5].T, np.trunc(sample.channels.astype(float) * factor))
    assert np.array_equal(table[:, 5], sample.current)
    assert sample.bases.letters == letters
    assert sample.info["SAMPLE NAME"] == labels["Sample name"]
    assert sample.info["PLATE ID"] == labels["Plate name"]
    assert sample.info["channelBase"] == labels["Base order"]
    assert sample.info["scanCount"] == int(labels["Number of lines"])
    assert f"{sample.info['runVoltage']:g}" == labels["Run Voltage"]


def test_samples_equal_their_text_dumps(plate):
    raws = sorted((plate / "p1").glob("*.rsd"))
    assert len(raws) == 3
    for path in raws:
        sample = lanewright.read(path)
        assert sample.raw
        assert len(sample.bases) == 0
        check(sample, plate / "p1/Text" / (path.stem + ".txt"), 1)
    called = sorted((plate / "out/p1_LC1_QX1").glob("*.esd"))
    assert len(called) == 2
    for path in called:
        sample = lanewright.read(path)
        assert not sample.raw
        assert sample.error == ""
        assert len(sample.bases) == sample.info["BASES CALLED"] > 100
        assert np.all(np.diff(sample.bases.positions) > 0)
        assert 0 <= sample.bases.qualities.min() <= sample.bases.qualities.max() <= 100
        check(sample, path.parent / "Text" / (path.stem + ".txt"), 100)


def test_failed_sample_has_its_reason(plate):
    (path,) = (plate / "out/p1_LC1_QX1").glob("*.fsd")
    sample = lanewright.read(path)
    assert len(sample.bases) == 0
    assert sample.error != ""


def test_damage_is_a_value_error_with_path_and_reason(plate, tmp_path):
    good = next((plate / "out/p1_LC1_QX1").glob("*.esd")).read_bytes()
    path = tmp_path / "x.esd"

    def reason(data):
        path.write_bytes(data)
        with pytest.raises(ValueError, match=f"^{path}: ") as error:
            lanewright.read(path)
        return str(error.value)

    assert "no sample file" in reason(b"")
    assert "no sample file" in reason(good[:-632] + bytes(632))
    assert "checksum" in reason(good[:100] + bytes([good[100] ^ 1]) + good[101:])
    assert "scans" in reason(good[20:])
    for length in range(0, len(good), 997):
        reason(good[:length])
    with pytest.raises(OSError):
        lanewright.read(tmp_path / "missing.esd")


def test_any_changed_byte_is_an_error_or_the_same_kind_of_sample(plate):
    good = bytearray(next((plate / "out/p1_LC1_QX1").glob("*.esd")).read_bytes())
    random = np.random.default_rng(5)
    refused = 0
    for at in random.integers(len(good) - 6000, len(good), 500):
        changed = good.copy()
        changed[at] ^= 1 << random.integers(8)
        try:
            lanewright.sample.parse(bytes(changed), checksum=False)
        except ValueError:
            refused += 1
    assert 0 < refused < 500
