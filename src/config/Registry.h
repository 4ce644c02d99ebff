// The instrument's registry.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

inline constexpr std::size_t registryTextSize = 260;  // bytes, with the NUL at the end
using RegistryText = std::array<char, registryTextSize>;

inline constexpr const char* baseCallingKey = "Quillion\\Base Calling";
inline constexpr const char* strandReaderKey = "Quillion\\Strand Reader";

// Puts the text of `valueName` under `subKey` into `buffer`, with a NUL at its end. 0 if there is none or it does not
// fit; nothing may be read from `buffer` then. Else not 0.
std::int32_t GetRegStr(std::string_view subKey, std::string_view valueName, RegistryText& buffer);
