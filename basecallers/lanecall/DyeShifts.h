// SPDX-License-Identifier: MIT
// The shifts of the dyes of known chemistries.
#pragma once

#include <optional>

#include "lanecall/Prepare.h"
#include "lanecall/Track.h"

namespace lanecall {

constexpr int chemistryCount = 3;

// By how many scans the peaks of each channel come late in a chemistry (0 to chemistryCount - 1), along a run with the
// given spacing in scans. None if the letters are not A, C, G and T.
std::optional<ChannelTracks> KnownShifts(int chemistry, const CTrack& spacing, const Letters& letters);

}  // namespace lanecall
