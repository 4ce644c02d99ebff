// SPDX-License-Identifier: MIT
#include "config/IniSection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <limits>

#include "platform/Ascii.h"
#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"

namespace {

constexpr std::string_view lineBlanks = " \t";

std::string_view TakeIniLine(std::string_view& rest) {
    std::string_view line = platform::TakeLine(rest);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return platform::Trim(line, lineBlanks);
}

// The name in brackets if the line starts a section.
std::optional<std::string_view> SectionName(std::string_view line) {
    if (!line.starts_with('[')) return std::nullopt;
    const std::size_t end = line.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    return line.substr(1, end - 1);
}

// All lines of the section, each followed by a NUL.
std::string SectionText(std::string_view text, std::string_view section) {
    std::string lines;
    bool inside = false;
    while (!text.empty()) {
        const std::string_view line = TakeIniLine(text);
        if (const auto name = SectionName(line)) {
            if (inside) break;
            inside = platform::EqualIgnoringCase(*name, section);
        } else if (inside && !line.empty() && line.front() != ';') {
            lines.append(line).push_back('\0');
        }
    }
    return lines;
}

}  // namespace

std::uint32_t GetPrivateProfileSectionA(std::string_view section, char* buffer, std::uint32_t size,
                                        const std::string& file) {
    if (size < 2) {
        std::fill_n(buffer, size, '\0');
        return 0;
    }
    std::string text;  // stays empty when there is no such file
    if (const platform::Error error = platform::ReadFile(file, text); error && !(error == ENOENT))
        platform::Warn(file + " cannot be read: " + error.Text());
    const std::string lines = SectionText(text, section);
    const std::size_t length = std::min<std::size_t>(lines.size(), size - 2);
    std::fill_n(std::copy_n(lines.begin(), length, buffer), 2, '\0');
    return static_cast<std::uint32_t>(length);
}

std::vector<std::string> ReadIniSection(std::string_view section, const std::string& file) {
    std::array<char, iniSectionSize> buffer;
    GetPrivateProfileSectionA(section, buffer.data(), iniSectionSize, file);
    std::vector<std::string> lines;
    for (const char* line = buffer.data(); *line != '\0'; line += lines.back().size() + 1)
        lines.emplace_back(line);
    return lines;
}

std::optional<IniEntry> SplitIniLine(std::string_view line) {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return std::nullopt;
    return IniEntry{std::string(platform::Trim(line.substr(0, tab), lineBlanks)),
                    std::string(platform::Trim(line.substr(tab + 1), lineBlanks))};
}

bool IsIniTrue(std::string_view value) {
    return platform::EqualIgnoringCase(value, "Y") || platform::EqualIgnoringCase(value, "T");
}

std::int32_t IniNumber(const std::string& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<long long>(std::strtoll(value.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}
