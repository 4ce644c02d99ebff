// SPDX-License-Identifier: MIT
#include "lanetools/text/SafeName.h"

#include <algorithm>
#include <cstddef>

#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

bool IsSafe(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("_-+. ").find(c) != std::string_view::npos;
}

}  // namespace

std::string SafeName(std::string_view text) {
    const std::string characters = ToUtf8(text);
    std::string name;
    for (std::size_t at = 0; at < characters.size() && name.size() < longestName;) {
        name += IsSafe(characters[at]) ? characters[at] : '_';
        at += Utf8Length(std::string_view(characters).substr(at));
    }
    if (!name.empty() && (name[0] == '.' || name[0] == '-')) name[0] = '_';
    return name;
}

}  // namespace lanetools
