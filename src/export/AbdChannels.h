// SPDX-License-Identifier: MIT
// The series of an ABD file: curves, run data and the separation matrix.
//
// A range of scans goes from the array index `start` to the one before `end`; every `step`-th scan (1 or more) is
// taken. A scan outside an array takes the value of the nearest scan inside, 0 if the array is empty. All throw
// CComError when the writer fails.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "samplestore/SampleFile.h"
#include "samplestore/SampleInfo.h"
#include "tracewriter/IAbdWriter.h"

using ChannelCurves = std::array<std::vector<double>, channelCount>;

// Adds the curves of C, A, G and T as "DATA" `firstNumber` to `firstNumber` + 3, all four on one scale: the values of
// the range from 0 to 2000. Adds nothing if the range is shorter than a step.
void WriteChannels(IAbdWriter& writer, const ChannelCurves& channels, std::int32_t start, std::int32_t end,
                   std::int32_t step, std::int32_t firstNumber);
// Adds "DATA" 5 to 8: voltage, current (a value for each scan of the range, as it was recorded), power (always 0) and
// temperature of the run. Adds nothing if the range is shorter than a step.
void WriteRunData(IAbdWriter& writer, const CSampleInfo& info, const std::vector<double>& current, std::int32_t start,
                  std::int32_t end, std::int32_t step);
// Adds `rows` as "MTRX" 1 and 101, rows and columns in the order C, A, G, T. The elements are multiplied by a factor
// that depends on the library that called `sample`, and are 0 if that factor is not finite.
void WriteMatrix(IAbdWriter& writer, const CSampleFile& sample, const Matrix4& rows);
