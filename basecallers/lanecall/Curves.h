// What the stages work on: four curves of equal length, one per channel, and ranges of their scans.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace lanecall {

constexpr int channelCount = 4;

using Curve = std::vector<double>;
using Curves = std::array<Curve, channelCount>;       // channel 1 first
using Matrix = std::array<std::array<double, 4>, 4>;  // row: channel, column: dye; how far a dye shows in a channel
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
