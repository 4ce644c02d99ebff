// The channel of each base, set by the last load of a sample.
#pragma once

#include <array>
#include <cstdint>

// Entry i is the channel (0 to 3) of letter i of "ACGT" and of "CAGT". Global to the program, which is safe because a
// sample's exports run before the next sample is loaded.
extern std::array<std::int32_t, 4> channelOrderAcgt;
extern std::array<std::int32_t, 4> channelOrderCagt;
