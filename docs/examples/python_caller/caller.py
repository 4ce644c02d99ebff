# SPDX-License-Identifier: MIT
"""A base caller in Python: at every scan where the tallest of the four channels has a peak, its letter is called.

Change `call` to try out ideas; the rest is the conversation with the program.
"""

from __future__ import annotations

from dataclasses import dataclass

import numpy as np


@dataclass
class Call:
    """What a base call gives."""

    curves: np.ndarray  # 4 x scans, 0 and above
    positions: np.ndarray  # scans
    channels: np.ndarray  # 0 to 3, one per position
    qualities: np.ndarray  # fractions, 1.0 being 100 percent


def call(raw: np.ndarray) -> Call:
    """Calls the bases of `raw`, 4 x scans."""
    curves = raw - raw.min(axis=1, keepdims=True)
    ordered = np.sort(curves, axis=0)
    tallest, highest, second = curves.argmax(axis=0), ordered[-1], ordered[-2]
    inner = np.arange(1, curves.shape[1] - 1)
    own = curves[tallest[inner], inner]
    rises = own > curves[tallest[inner], inner - 1]
    falls = own >= curves[tallest[inner], inner + 1]
    positions = inner[rises & falls & (own > highest.max() / 20)]
    return Call(curves, positions, tallest[positions], 1 - second[positions] / highest[positions])


def register(ffi) -> None:  # noqa: C901 - one function per entry point
    """Defines the entry points of the library. `ffi` is cffi's, of the library that was built."""
    state: dict = {}

    def text(words: str):
        # Kept, since the program reads it after the function has returned.
        return state.setdefault("text " + words, ffi.new("char[]", words.encode()))

    @ffi.def_extern()
    def GetBaseCallerCod():
        return text("Py")

    @ffi.def_extern()
    def GetProgramName():
        return text("PythonCaller")

    @ffi.def_extern()
    def SetNumSamples(count):
        pass

    @ffi.def_extern()
    def SetRawData(sample, arrays, channels, scans, rate, order):
        curve = [np.frombuffer(ffi.buffer(arrays[k], 8 * scans), np.float64) for k in range(4)]
        state["raw"] = np.array(curve)  # a copy: the program's arrays are valid until CleanUp only
        state["letters"] = ffi.string(order)[:4]

    @ffi.def_extern()
    def SetApproxiamtePeakWidth(sample, width):
        pass

    @ffi.def_extern()
    def SetSpecSepMatrix(sample, rows):
        pass

    def remember(kind, error, trace):
        # The function then returns 0, and the program asks for the reason.
        state["problem"] = repr(error)

    @ffi.def_extern(onerror=remember)
    def ExecuteProcedure(sample, procedure, zero):
        state["call"] = call(state["raw"])
        return 1

    @ffi.def_extern()
    def ReportProblem(sample, number, value):
        return text(state.get("problem", "Not available"))

    @ffi.def_extern()
    def PeekProcessedTrace(sample, scratch, first, end):
        state["curves"] = [ffi.new("double[]", curve.tolist()) for curve in state["call"].curves]
        state["rows"] = ffi.new("double*[]", state["curves"])
        first[0], end[0] = 0, state["call"].curves.shape[1]
        return state["rows"]

    @ffi.def_extern()
    def ReportSequence(sample, count, first_good, last_good, overall):
        result: Call = state["call"]
        total = len(result.positions)
        peaks, bases = ffi.new("PeakRecord[]", total + 1), ffi.new("BaseRecord[]", total + 1)
        for i in range(total):
            channel = int(result.channels[i])
            peaks[i].position = float(result.positions[i])
            bases[i].letter = state["letters"][channel : channel + 1]
            bases[i].peakCount, bases[i].peaks = 1, peaks + i
            bases[i].quality = float(result.qualities[i])
            bases[i].strengths[channel] = 1.0
        state["bases"] = (peaks, bases)
        count[0], first_good[0], last_good[0] = total, -1, 0  # all bases count as good
        overall[0] = float(result.qualities.mean()) if total > 0 else 0.0
        return bases

    @ffi.def_extern()
    def ReportSpecSeparatnMatrixUsed(sample):
        return ffi.NULL

    @ffi.def_extern()
    def CleanUp():
        for name in ("raw", "call", "curves", "rows", "bases", "problem"):
            state.pop(name, None)
