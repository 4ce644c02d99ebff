// SPDX-License-Identifier: MIT
#include "lanetools/samples/Well.h"

#include <charconv>
#include <system_error>

#include "platform/Ascii.h"

namespace lanetools {

std::optional<CWell> ParseWell(std::string_view text) {
    constexpr char lastRow = 'P';
    constexpr std::size_t columns = 24;
    if (text.empty()) return std::nullopt;
    const char row = platform::UpperAscii(text[0]);
    std::size_t column = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data() + 1, end, column);
    if (error != std::errc() || stop != end) return std::nullopt;
    if (row < 'A' || row > lastRow || column < 1 || column > columns) return std::nullopt;
    return CWell{static_cast<std::size_t>(row - 'A'), column - 1};
}

std::optional<std::string> WellName(std::string_view text) {
    const auto well = ParseWell(text);
    if (!well) return std::nullopt;
    const std::size_t column = well->column + 1;
    return static_cast<char>('A' + well->row) + std::string(column < 10 ? "0" : "") + std::to_string(column);
}

bool IsBeyond96(const CWell& well) {
    return well.row >= 8 || well.column >= 12;
}

bool IsBeyond96(std::string_view well) {
    const auto parsed = ParseWell(well);
    return parsed && IsBeyond96(*parsed);
}

}  // namespace lanetools
