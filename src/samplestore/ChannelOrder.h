// SPDX-License-Identifier: MIT
// The channel of each base, set by the last load of a sample.
#pragma once

#include <array>
#include <cstdint>

// Entry i is the channel (0 to 3) that shows letter i of "ACGT", or of "CAGT". Global variables are safe here, because
// all exports of a sample run before the next sample is loaded.
extern std::array<std::int32_t, 4> channelOrderAcgt;
extern std::array<std::int32_t, 4> channelOrderCagt;
