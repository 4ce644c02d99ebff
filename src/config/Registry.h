// SPDX-License-Identifier: MIT
// Texts of the instrument's registry.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

inline constexpr std::size_t registryTextSize = 260;  // bytes, with the NUL at the end
using RegistryText = std::array<char, registryTextSize>;

inline constexpr const char* baseCallingKey = "Quillion\\Base Calling";
inline constexpr const char* strandReaderKey = "Quillion\\Strand Reader";

// Copies the text of `valueName` under `subKey` into `buffer`, NUL-terminated. Non-zero on success; 0 if there is no
// such text or it does not fit, and then `buffer` is unchanged.
std::int32_t GetRegStr(std::string_view subKey, std::string_view valueName, RegistryText& buffer);
