// SPDX-License-Identifier: MIT
#include "lanecall/DyeShifts.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "lanecall/Curves.h"

namespace lanecall {

namespace {

constexpr std::string_view dyeOrder = "GTAC";
constexpr std::size_t knotCount = 9;
constexpr std::array<double, knotCount> knotBases = {24, 32, 40, 50, 75, 120, 225, 400, 600};

// Measured: by how many spacings the peak of a dye comes later than the mean of the four, medians over real reads. Rows
// are in the order of `dyeOrder`, columns in that of `knotBases`. Only the usual kit was measured before base 40.
using ChemistryShifts = std::array<std::array<double, knotCount>, channelCount>;
constexpr std::array<ChemistryShifts, chemistryCount> chemistries = {{
    // rhodamine dyes of the usual kit
    {{{-0.95, -0.92, -0.86, -0.79, -0.66, -0.55, -0.45, -0.40, -0.37},
      {1.08, 1.00, 0.88, 0.75, 0.61, 0.50, 0.39, 0.34, 0.31},
      {0.15, 0.07, 0.07, 0.08, 0.06, 0.04, 0.03, 0.02, 0.02},
      {-0.28, -0.15, -0.09, -0.04, -0.01, 0.01, 0.03, 0.04, 0.04}}},
    // the first generation of that kit
    {{{-0.65, -0.65, -0.65, -0.65, -0.55, -0.48, -0.39, -0.32, -0.25},
      {0.10, 0.10, 0.10, 0.10, 0.10, 0.10, 0.08, 0.07, 0.03},
      {0.15, 0.15, 0.15, 0.15, 0.15, 0.11, 0.09, 0.06, 0.06},
      {0.40, 0.40, 0.40, 0.40, 0.30, 0.27, 0.22, 0.19, 0.16}}},
    // energy-transfer dyes of another kit
    {{{-0.11, -0.11, -0.11, -0.11, -0.12, -0.15, -0.11, -0.09, -0.09},
      {0.57, 0.57, 0.57, 0.57, 0.58, 0.50, 0.41, 0.34, 0.31},
      {-0.18, -0.18, -0.18, -0.18, -0.18, -0.14, -0.14, -0.10, -0.10},
      {-0.28, -0.28, -0.28, -0.28, -0.28, -0.21, -0.16, -0.15, -0.12}}},
}};

double Between(const std::array<double, knotCount>& values, double base) {
    if (base <= knotBases.front()) return values.front();
    for (std::size_t k = 1; k < knotCount; ++k)
        if (base < knotBases[k])
            return values[k - 1] +
                   (base - knotBases[k - 1]) / (knotBases[k] - knotBases[k - 1]) * (values[k] - values[k - 1]);
    return values.back();
}

}  // namespace

std::optional<ChannelTracks> KnownShifts(int chemistry, const CTrack& spacing, const Letters& letters) {
    std::array<std::size_t, channelCount> dyes{};
    for (std::size_t c = 0; c < channelCount; ++c) {
        dyes[c] = dyeOrder.find(letters[c]);
        if (dyes[c] == std::string_view::npos) return std::nullopt;
    }
    constexpr double basesBeforeTheRead = 10;  // the range usually begins this much before the first base
    const CTrack bases = BasesAlong(spacing);
    ChannelTracks tracks;
    for (std::size_t c = 0; c < channelCount; ++c) {
        tracks[c] = spacing;
        for (std::size_t k = 0; k < spacing.Size(); ++k)
            tracks[c][k] *=
                Between(chemistries[static_cast<std::size_t>(chemistry)][dyes[c]], bases[k] - basesBeforeTheRead);
    }
    return tracks;
}

}  // namespace lanecall
