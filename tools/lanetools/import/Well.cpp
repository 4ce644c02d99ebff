#include "lanetools/import/Well.h"

#include <charconv>

#include "platform/Ascii.h"

namespace lanetools {

std::optional<std::string> WellName(std::string_view text) {
    if (text.size() < 2 || text.size() > 3) return std::nullopt;
    const char row = platform::UpperAscii(text[0]);
    unsigned column = 0;
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), column);
    const bool isWell = error == std::errc() && end == text.data() + text.size();
    if (!isWell || row < 'A' || row > 'P' || column < 1 || column > 24) return std::nullopt;
    return row + std::string(column < 10 ? "0" : "") + std::to_string(column);
}

bool IsBeyond96(std::string_view well) {
    return !well.empty() && (well[0] > 'H' || well.substr(1) > "12");
}

}  // namespace lanetools
