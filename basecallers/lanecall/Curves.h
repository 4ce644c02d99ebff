// SPDX-License-Identifier: MIT
// The data that the stages share: four curves of equal length, one per channel, and ranges of scans.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace lanecall {

constexpr int channelCount = 4;

using Curve = std::vector<double>;
using Curves = std::array<Curve, channelCount>;  // channel 1 first
// Signal of each dye (column) in each channel (row), relative to its signal in its own channel.
using Matrix = std::array<std::array<double, 4>, 4>;
using PerChannel = std::array<double, channelCount>;

// Scans from `first` up to but not including `end`.
struct ScanRange {
    int first = 0;
    int end = 0;
    int Length() const { return end > first ? end - first : 0; }
};

inline int ScanCount(const Curves& curves) {
    return static_cast<int>(curves[0].size());
}

}  // namespace lanecall
