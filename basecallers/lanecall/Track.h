// A quantity that changes slowly along the run, such as the base spacing: values at evenly spaced scans.
#pragma once

#include <vector>

#include "lanecall/Curves.h"

namespace lanecall {

class CTrack {
  public:
    CTrack() = default;
    // values[k] holds at scan first + k * step; step above 0.
    CTrack(double first, double step, std::vector<double> values);

    // Linear between two values, constant beyond the ends; 0 for a track without values.
    double At(double scan) const;
    std::size_t Size() const { return values.size(); }
    double ScanOf(std::size_t knot) const { return first + step * static_cast<double>(knot); }
    double& operator[](std::size_t knot) { return values[knot]; }
    double operator[](std::size_t knot) const { return values[knot]; }

    // Replaces outliers by the median of 2 * reach + 1 neighbours, then averages over the same reach.
    void Smooth(int reach);

  private:
    double first = 0;
    double step = 1;
    std::vector<double> values;
};

// The number of bases from the track's first knot to each other one, of a track of spacings above 0.
CTrack BasesAlong(const CTrack& spacing);

using ChannelTracks = std::array<CTrack, channelCount>;

}  // namespace lanecall
