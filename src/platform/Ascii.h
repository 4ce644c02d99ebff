// SPDX-License-Identifier: MIT
// Letter case, trimming and splitting of 8-bit text, independent of the locale.
#pragma once

#include <string>
#include <string_view>

namespace platform {

constexpr char UpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline std::string UpperAscii(std::string_view text) {
    std::string upper(text);
    for (char& c : upper)
        c = UpperAscii(c);
    return upper;
}

inline bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (UpperAscii(a[i]) != UpperAscii(b[i])) return false;
    }
    return true;
}

// `text` without characters of `blanks` at both ends.
constexpr std::string_view Trim(std::string_view text, std::string_view blanks = " \t\r") {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Removes the text up to the next `separator`, or up to the end, and that separator from the front of `rest`, and
// returns the text. A separator before position `from` is part of the text.
constexpr std::string_view TakeUntil(std::string_view separator, std::string_view& rest, std::size_t from = 0) {
    const std::size_t end = rest.find(separator, from);
    const std::string_view text = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + separator.size());
    return text;
}

constexpr std::string_view TakeLine(std::string_view& rest) {
    return TakeUntil("\n", rest);
}

}  // namespace platform
