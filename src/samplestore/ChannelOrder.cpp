// SPDX-License-Identifier: MIT
#include "samplestore/ChannelOrder.h"

std::array<std::int32_t, 4> channelOrderAcgt = {0, 1, 2, 3};
std::array<std::int32_t, 4> channelOrderCagt = {0, 1, 2, 3};
