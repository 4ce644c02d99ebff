// First stage: the trace as it was recorded becomes curves on a baseline of 0, and the stretch that holds the read.
#pragma once

#include <array>
#include <optional>

#include "lanecall/Curves.h"

namespace lanecall {

using Letters = std::array<char, channelCount>;  // the base that each channel shows

// What a caller is given.
struct Recorded {
    Curves curves;  // in the detector's counts, all of one length
    Letters letters{'A', 'C', 'T', 'G'};
    std::optional<ScanRange> wanted;  // the stretch to keep to
    Matrix given{};                   // rows and columns in the order A, C, T, G
};

struct Prepared {
    Curves curves;     // in counts above the baseline, without flashes
    ScanRange range;   // of the read
    PerChannel noise;  // deviation, in counts
};

// Throws CUnreadable for a trace that is too short, shows no signal or is saturated.
Prepared Prepare(const Recorded& recorded);

}  // namespace lanecall
