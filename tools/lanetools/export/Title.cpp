// SPDX-License-Identifier: MIT
#include "lanetools/export/Title.h"

#include <algorithm>
#include <array>

#include "lanetools/ExitCode.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

// White space beyond ASCII, as Unicode lists it; readers end a title there too.
constexpr std::array<std::string_view, 17> wideSpaces{"\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003",
                                                      "\u2004", "\u2005", "\u2006", "\u2007", "\u2008", "\u2009",
                                                      "\u200A", "\u2028", "\u2029", "\u202F", "\u205F"};
constexpr std::string_view ideographicSpace = "\u3000";

bool IsSpace(std::string_view character) {
    return character == " " || character == ideographicSpace ||
           std::find(wideSpaces.begin(), wideSpaces.end(), character) != wideSpaces.end();
}

// `text` with "_" for each UTF-8 character of which `isBad` is true.
template <class IsBad>
std::string Underscored(std::string_view text, IsBad isBad) {
    std::string result;
    while (!text.empty()) {
        const std::string_view character = text.substr(0, std::max<std::size_t>(Utf8Length(text), 1));
        if (isBad(character))
            result += '_';
        else
            result += character;
        text.remove_prefix(character.size());
    }
    return result;
}

bool IsPrintableAscii(std::string_view character) {
    return character.size() == 1 && character[0] >= ' ' && character[0] <= '~';
}

}  // namespace

CTitlePattern::CTitlePattern(const std::string& option, const std::string& pattern,
                             const std::vector<std::string>& columns) {
    const auto refuse = [&](const std::string& why) { throw CRefused(option + ": " + why + " in '" + pattern + "'"); };
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t open = std::min(pattern.find('{', at), pattern.size());
        const std::string plain = pattern.substr(at, open - at);
        if (plain.find('}') != std::string::npos) refuse("a '}' has no '{' before it");
        if (!plain.empty()) parts.push_back({false, plain});
        if (open == pattern.size()) break;
        const std::size_t close = pattern.find('}', open);
        if (close == std::string::npos) refuse("a '{' has no '}' after it");
        const std::string column = pattern.substr(open + 1, close - open - 1);
        if (std::find(columns.begin(), columns.end(), column) == columns.end())
            refuse("'" + column + "' is not a column");
        parts.push_back({true, column});
        at = close + 1;
    }
    if (parts.empty()) throw CRefused(option + ": the pattern is empty");
}

std::string CTitlePattern::Fill(const std::function<std::string(const std::string&)>& text) const {
    std::string title;
    for (const CPart& part : parts)
        title += part.isColumn ? text(part.text) : part.text;
    return title;
}

std::string OneWord(std::string_view text) {
    return Underscored(OneLine(text), IsSpace);
}

std::string SamTitle(std::string_view word) {
    std::string title =
        Underscored(word, [](std::string_view c) { return !IsPrintableAscii(c) || c == " " || c == "@"; });
    if (title == "*") title = "_";
    return title.substr(0, longestSamTitle);
}

std::string SamText(std::string_view text) {
    return Underscored(text, [](std::string_view c) { return !IsPrintableAscii(c); });
}

}  // namespace lanetools
