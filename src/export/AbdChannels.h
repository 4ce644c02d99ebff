// The series of an ABD file: curves, run data and the separation matrix. Ranges are indices of the arrays, `end` is not
// part of a range, and every `step`-th scan is taken. Each raises CComError when the writer fails.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "samplestore/SampleFile.h"
#include "tracewriter/IAbdWriter.h"

using ChannelCurves = std::array<std::vector<double>, channelCount>;

// The curves of C, A, G and T as "DATA" `firstNumber` to `firstNumber` + 3, on one scale of their own. Nothing for a
// range without a whole step. A scan outside the arrays takes the value of the nearest one.
void WriteChannels(IAbdWriter& writer, const ChannelCurves& channels, std::int32_t start, std::int32_t end,
                   std::int32_t step, std::int32_t firstNumber);
// "DATA" 5 to 8: voltage, current, power (always 0) and temperature of the run.
void WriteRunData(IAbdWriter& writer, const CSampleInfo& info, const std::vector<double>& current, std::int32_t start,
                  std::int32_t end, std::int32_t step);
// `rows` as "MTRX" 1 and 101, in the order C, A, G, T. The factor depends on who called `sample`.
void WriteMatrix(IAbdWriter& writer, const CSampleFile& sample, const Matrix4& rows);
