// SPDX-License-Identifier: MIT
// Places of a read where a second letter, or a third, is as strong as that of another allele or template would be.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "lanetools/samples/Stretch.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

// The least strength of a second letter, relative to the strongest, from which the summary counts a place as mixed.
inline constexpr double usualMixedRatio = 0.33;

// A place with more than one letter.
struct CMixedPlace {
    std::size_t base;     // from 0, among all called bases
    std::string letters;  // two to four of A, C, G and T, the strongest first
    char code;            // the IUPAC letter for them
    double ratio;         // strength of the second letter relative to the first, above 0, 1 at most
};

// The places among the bases of `stretch` whose second letter has at least `ratio` (above 0) of the strength of the
// strongest. Letters are those of the sample's channels, strengths those that the base caller reported. None if the
// channels do not have the four letters A, C, G and T. Bases that the caller has hidden are not looked at. `info` is
// that of a called sample.
std::vector<CMixedPlace> MixedPlaces(const CSampleInfo& info, CStretch stretch, double ratio);

}  // namespace lanetools
