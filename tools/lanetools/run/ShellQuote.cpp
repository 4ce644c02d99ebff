// SPDX-License-Identifier: MIT
#include "lanetools/run/ShellQuote.h"

#include <string_view>

namespace lanetools {

namespace {

bool IsPlain(const std::string& word) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+./:,@%=";
    return !word.empty() && word.find_first_not_of(plain) == std::string::npos;
}

std::string Quoted(const std::string& word) {
    if (IsPlain(word)) return word;
    std::string quoted = "'";
    for (const char c : word) {
        if (c == '\'')
            quoted += "'\\''";
        else
            quoted += c;
    }
    return quoted + "'";
}

}  // namespace

std::string ShellQuoted(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        if (!line.empty()) line += ' ';
        line += Quoted(word);
    }
    return line;
}

}  // namespace lanetools
