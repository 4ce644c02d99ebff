// SPDX-License-Identifier: MIT
#include "lanecall/SeparateDyes.h"

#include <string_view>
#include <utility>

#include "lanecall/NoiseSmoothing.h"
#include "lanecall/RawTrace.h"
#include "lanecall/Separation.h"
#include "lanecall/SeparationEstimate.h"
#include "lanecall/Track.h"
#include "lanecall/Unreadable.h"

namespace lanecall {

namespace {

// Smoothing for the first search of peaks, as standard deviations in scans. Peaks have deviations of 3 to 7: the least
// smoothing joins none of them, the most still separates two neighbours of one letter.
constexpr double minSmoothing = 2.4, maxSmoothing = 4.2;

}  // namespace

std::optional<std::array<std::size_t, channelCount>> BaseIndices(const Letters& letters) {
    constexpr std::string_view order = "ACTG";
    std::array<std::size_t, channelCount> indices{};
    std::array<bool, channelCount> seen{};
    for (std::size_t c = 0; c < channelCount; ++c) {
        const std::size_t index = order.find(letters[c]);
        if (index == std::string_view::npos || seen[index]) return std::nullopt;
        seen[index] = true;
        indices[c] = index;
    }
    return indices;
}

Separated SeparateDyes(Prepared prepared, const Letters& letters, const Matrix& given) {
    const ScanRange range = prepared.range;
    PerChannel noise{};
    for (std::size_t c = 0; c < channelCount; ++c)
        noise[c] = NoiseOf(prepared.curves[c], range);
    const ChannelTracks smoothing =
        SmoothingFor(prepared.curves, range, noise, CTrack(0, 1, {minSmoothing}), CTrack(0, 1, {maxSmoothing}));
    Curves bends = Bend(prepared.curves, range, smoothing);
    Matrix matrix = Identity();
    const auto indices = BaseIndices(letters);
    if (indices && !IsIdentity(given)) {
        for (std::size_t r = 0; r < channelCount; ++r)
            for (std::size_t c = 0; c < channelCount; ++c)
                matrix[r][c] = given[(*indices)[r]][(*indices)[c]];
    } else {
        matrix = EstimateSeparation(bends, FindImpulses(bends, range));
    }
    const auto inverse = Invert(matrix);
    if (!inverse) throw CUnreadable("The spectral separation matrix cannot be inverted");
    Separate(prepared.curves, *inverse);
    Separate(bends, *inverse);
    for (std::size_t c = 0; c < channelCount; ++c)
        noise[c] = NoiseOf(prepared.curves[c], range);
    return {std::move(prepared.curves), range, noise, matrix, FindImpulses(bends, range)};
}

}  // namespace lanecall
