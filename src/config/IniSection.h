// SPDX-License-Identifier: MIT
// Sections of a settings file.
//
//   [section]       letter case of the name is ignored; the first section of a name counts
//   ; comment       skipped, like empty lines
//   key<TAB>value   any other line up to the next section; spaces and tabs at both ends of a line are removed
//
// Line ends are LF or CR LF.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Size in bytes of the buffer for a section. What does not fit in it is ignored.
inline constexpr std::uint32_t iniSectionSize = 1000;

// Copies the lines of the section into `buffer`, each followed by a NUL, up to `size` - 2 bytes in all, and adds two
// NULs. Returns the number of bytes before these two; 0 if there is no such file or section. Warns of a file that
// exists and cannot be read.
std::uint32_t GetPrivateProfileSectionA(std::string_view section, char* buffer, std::uint32_t size,
                                        const std::string& file);

// The lines of the section that fit into iniSectionSize bytes; the last may be cut short.
std::vector<std::string> ReadIniSection(std::string_view section, const std::string& file);

struct IniEntry {
    std::string key, value;
};

// Splits a line at its first TAB (an equals sign does not split it) and trims both parts. Nothing without a TAB.
std::optional<IniEntry> SplitIniLine(std::string_view line);

// True for "Y" and "T" in either case, and for nothing else.
bool IsIniTrue(std::string_view value);
// Decimal number at the start of `value`, after white space; 0 if there is none. A number beyond 32 bits gives the
// nearest 32-bit one.
std::int32_t IniNumber(const std::string& value);
