// By how much the dyes of known chemistries come early or late.
#pragma once

#include <optional>

#include "lanecall/Prepare.h"
#include "lanecall/Track.h"

namespace lanecall {

constexpr int chemistryCount = 3;

// The scans by which the peaks of each channel come late in a chemistry (0 to chemistryCount - 1) along a run of the
// given spacing; none when the letters are not A, C, G and T.
std::optional<ChannelTracks> KnownShifts(int chemistry, const CTrack& spacing, const Letters& letters);

}  // namespace lanecall
