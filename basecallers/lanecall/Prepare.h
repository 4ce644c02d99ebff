// SPDX-License-Identifier: MIT
// First stage: removes the baseline and the flashes from the recorded trace and finds the stretch that holds the read.
#pragma once

#include <array>
#include <optional>

#include "lanecall/Curves.h"
#include "lanecall/SignalRange.h"

namespace lanecall {

using Letters = std::array<char, channelCount>;  // the base whose dye each channel detects

struct Recorded {
    Curves curves;                    // in the detector's counts, all of one length
    std::optional<ScanRange> wanted;  // the read is searched in this range only
};

struct Prepared {
    Curves curves;    // in counts above the baseline, without flashes
    ScanRange range;  // of the read
};

// Throws CUnreadable for a trace that is shorter than 200 scans, has no signal or is saturated.
Prepared Prepare(const Recorded& recorded, SignalPart part = SignalPart::whole);

}  // namespace lanecall
