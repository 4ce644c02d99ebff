// SPDX-License-Identifier: MIT
// Numbers inside the values of switches.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace lanetools {

// Reads all of `text` as a number; empty if it is not one, or out of the type's range. "nan" and "inf" are read as
// numbers of a floating-point type.
template <class Number>
std::optional<Number> ParseNumber(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace lanetools
