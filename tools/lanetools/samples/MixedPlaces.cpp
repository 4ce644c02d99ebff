// SPDX-License-Identifier: MIT
#include "lanetools/samples/MixedPlaces.h"

#include <htslib/hts.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <string_view>

#include "lanetools/samples/ChannelLetters.h"
#include "lanetools/samples/HiddenBase.h"

namespace lanetools {

namespace {

using Order = std::array<std::size_t, channelCount>;

bool AreAllFour(std::string letters) {
    std::sort(letters.begin(), letters.end());
    return letters == "ACGT";
}

// The channels, the strongest first; of equals the first.
Order StrongestFirst(const BaseStrengths& strengths) {
    Order order;
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return strengths[a] > strengths[b]; });
    return order;
}

char CodeOf(std::string_view letters) {
    std::uint8_t set = 0;
    for (const char letter : letters)
        set |= seq_nt16_table[static_cast<std::uint8_t>(letter)];
    return seq_nt16_str[set];
}

}  // namespace

std::vector<CMixedPlace> MixedPlaces(const CSampleInfo& info, CStretch stretch, double ratio) {
    std::vector<CMixedPlace> places;
    const std::string channels = ChannelLetters(info);
    const CAnalysisInfo& analysis = info.analysis;
    if (!AreAllFour(channels)) return places;
    for (std::size_t i = stretch.start; i < std::min(stretch.End(), analysis.strengths.size()); ++i) {
        const BaseStrengths& strengths = analysis.strengths[i];
        const bool areNumbers =
            std::all_of(strengths.begin(), strengths.end(), [](float strength) { return strength >= 0; });
        if (!areNumbers || IsHidden(analysis, i)) continue;
        const Order order = StrongestFirst(strengths);
        const double strongest = strengths[order[0]];
        CMixedPlace place{i, {}, 'N', strongest > 0 ? strengths[order[1]] / strongest : 0};
        if (!(place.ratio >= ratio)) continue;
        for (const std::size_t channel : order)
            if (strengths[channel] >= ratio * strongest) place.letters += channels[channel];
        place.code = CodeOf(place.letters);
        places.push_back(std::move(place));
    }
    return places;
}

}  // namespace lanetools
