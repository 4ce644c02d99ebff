// Sections of a settings file.
//
//   [section]       letter case of the name is ignored; the first section of a name counts
//   ; comment       left out, as empty lines are
//   key<TAB>value   any other line up to the next section; blanks and tabs at both ends of a line are removed
//
// Line ends are LF or CR LF.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What of a section exists for the program: the buffer that takes it, in bytes.
inline constexpr std::uint32_t iniSectionSize = 1000;

// Puts the lines of the section into `buffer`, each with a NUL. They are cut at `size` - 2 bytes and two NULs end the
// text. Gives the number of bytes before these two; 0 when there is no such file or section.
std::uint32_t GetPrivateProfileSectionA(std::string_view section, char* buffer, std::uint32_t size,
                                        const std::string& file);

// The lines of the section as far as they fit into iniSectionSize bytes; the last may be cut short.
std::vector<std::string> ReadIniSection(std::string_view section, const std::string& file);

struct IniEntry {
    std::string key, value;
};

// Splits a line at its first TAB (an equals sign divides nothing) and trims both parts. Nothing without a TAB.
std::optional<IniEntry> SplitIniLine(std::string_view line);

// True for "Y" and "T" in either case, and for nothing else.
bool IsIniTrue(std::string_view value);
// Decimal number at the head of `value`, after white space; 0 when there is none. Beyond 32 bits the nearest limit.
std::int32_t IniNumber(const std::string& value);
