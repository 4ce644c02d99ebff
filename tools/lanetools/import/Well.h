// Wells of plates of 12 x 8 and 24 x 16.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lanetools {

// "A01" for "A1", "a1" and "A01": row A to P, column 1 to 24 in two digits. Nothing for what is no well.
std::optional<std::string> WellName(std::string_view text);

// True when a plate of 12 columns and 8 rows does not have the well. `well` is a result of WellName, or empty.
bool IsBeyond96(std::string_view well);

}  // namespace lanetools
