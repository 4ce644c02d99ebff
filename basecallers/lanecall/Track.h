// SPDX-License-Identifier: MIT
// A quantity that changes slowly along the run, such as the base spacing: its values at evenly spaced scans, the knots.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "lanecall/Curves.h"

namespace lanecall {

class CTrack {
  public:
    CTrack() = default;
    // values[k] is the value at scan first + k * step; `step` is above 0.
    CTrack(double first, double step, std::vector<double> values);

    // Linear between two knots, constant beyond the first and the last; 0 for a track without knots.
    double At(double scan) const;
    std::size_t Size() const { return values.size(); }
    double ScanOf(std::size_t knot) const { return first + step * static_cast<double>(knot); }
    double& operator[](std::size_t knot) { return values[knot]; }
    double operator[](std::size_t knot) const { return values[knot]; }

    // Replaces each value by the median over 2 * reach + 1 knots, which removes outliers, then by the mean over as
    // many.
    void Smooth(int reach);

  private:
    double first = 0;
    double step = 1;
    std::vector<double> values;
};

inline double CTrack::At(double scan) const {
    if (values.empty()) return 0;
    const double place = (scan - first) / step;
    if (!(place > 0)) return values.front();
    const auto last = static_cast<double>(values.size() - 1);
    if (place >= last) return values.back();
    const auto left = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(place));
    const double share = place - static_cast<double>(left);
    return values[left] + share * (values[left + 1] - values[left]);
}

// The number of bases from the first knot to each knot, for a track of spacings in scans, all above 0.
CTrack BasesAlong(const CTrack& spacing);

using ChannelTracks = std::array<CTrack, channelCount>;

}  // namespace lanecall
