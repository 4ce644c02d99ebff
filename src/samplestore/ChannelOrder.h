// The channel of each base, as the last load of a sample settled it.
#pragma once

#include <array>
#include <cstdint>

// Entry i is the channel (0 to 3) of the i-th letter of "ACGT" and of "CAGT". Program-wide: a sample's exports run
// before the next sample is loaded.
extern std::array<std::int32_t, 4> channelOrderAcgt;
extern std::array<std::int32_t, 4> channelOrderCagt;
