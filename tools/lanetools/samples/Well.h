// SPDX-License-Identifier: MIT
// Wells of plates of 12 x 8 and 24 x 16.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lanetools {

// Counted from 0: A01 is row 0, column 0.
struct CWell {
    std::size_t row, column;
    auto operator<=>(const CWell&) const = default;
};

// Reads "B7", "b7" or "B07": row A to P, column 1 to 24. Empty if `text` is not such a well.
std::optional<CWell> ParseWell(std::string_view text);

// The name of that well with two digits: "A01" for "A1", "a1" and "A01". Empty if `text` is not a well.
std::optional<std::string> WellName(std::string_view text);

// True if a plate of 12 columns and 8 rows does not have the well.
bool IsBeyond96(const CWell& well);
// The same for the name of a well. False for a text that is not a well.
bool IsBeyond96(std::string_view well);

}  // namespace lanetools
