// SPDX-License-Identifier: MIT
#include "lanetools/text/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace lanetools {

namespace {

std::uint8_t Byte(std::string_view text, std::size_t at) {
    return static_cast<std::uint8_t>(text[at]);
}

// The range of the second byte depends on the first: Unicode 15, table 3-7.
bool IsSecondByteGood(std::uint8_t first, std::uint8_t second) {
    const std::uint8_t low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return second >= low && second <= high;
}

bool IsControl(std::string_view character) {
    const std::uint8_t first = Byte(character, 0);
    return first < 0x20 || first == 0x7F || (character.size() == 2 && first == 0xC2 && Byte(character, 1) < 0xA0);
}

}  // namespace

std::size_t Utf8Length(std::string_view text) {
    const std::uint8_t first = Byte(text, 0);
    if (first < 0x80) return 1;
    if (first < 0xC2 || first > 0xF4) return 0;
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (text.size() < length || !IsSecondByteGood(first, Byte(text, 1))) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if ((Byte(text, i) & 0xC0) != 0x80) return 0;
    return length;
}

std::string ToUtf8(std::string_view bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t length = Utf8Length(bytes.substr(at));
        if (length == 0) break;
        at += length;
    }
    if (at == bytes.size()) return std::string(bytes);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::uint8_t byte = Byte(bytes, i);
        if (byte < 0x80) {
            text += static_cast<char>(byte);
        } else {
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

std::string OneLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        const std::size_t length = std::max<std::size_t>(Utf8Length(text), 1);
        const std::string_view character = text.substr(0, length);
        if (IsControl(character))
            line += ' ';
        else
            line += character;
        text.remove_prefix(length);
    }
    return line;
}

}  // namespace lanetools
