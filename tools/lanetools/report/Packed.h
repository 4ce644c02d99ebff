// SPDX-License-Identifier: MIT
// How numbers travel inside the page: as bytes, compressed, in base64. The page's own code unpacks them
// (page/src/data.ts has the layouts).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace lanetools {

// Appends `values` at 8 bits, each as the difference to the one before it (modulo 256): 254 stands for `top` and above,
// 0 for 0 and below. A value may be off by 1.5. Anything becomes 0 when `top` is not above 0.
void AppendCurve(std::vector<std::uint8_t>& bytes, std::span<const float> values, float top);

// The bytes compressed by zlib, in base64. The same bytes give the same text. Throws std::runtime_error without memory.
std::string Packed(std::span<const std::uint8_t> bytes);

}  // namespace lanetools
