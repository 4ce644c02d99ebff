// SPDX-License-Identifier: MIT
#include "tracewriter/AbifElement.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::size_t maxPStringLength = 255;
constexpr double highestQuality = 93.0;
constexpr double highestOfWholePercent = 40.0;

AbifElement FromText(const std::string& text) {
    AbifElement element;
    element.data.reserve(text.size() + 1);
    element.count = static_cast<std::uint32_t>(text.size() + 1);
    if (text.size() <= maxPStringLength) {
        element.type = AbifType::PString;
        Put8(element.data, static_cast<std::uint32_t>(text.size()));
        PutText(element.data, text);
    } else {
        element.type = AbifType::CString;
        PutText(element.data, text);
        Put8(element.data, 0);
    }
    return element;
}

AbifElement FromShorts(std::span<const std::int16_t> values) {
    AbifElement element{AbifType::Short, 2, static_cast<std::uint32_t>(values.size()), Bytes(2 * values.size())};
    std::byte* next = element.data.data();
    for (const std::int16_t value : values) {
        const std::uint32_t word = static_cast<std::uint16_t>(value);
        *next++ = static_cast<std::byte>(word >> 8);
        *next++ = static_cast<std::byte>(word & 0xFF);
    }
    return element;
}

AbifElement FromBytes(std::span<const std::uint8_t> values) {
    AbifElement element{AbifType::Char, 1, static_cast<std::uint32_t>(values.size()), Bytes(values.size())};
    std::transform(values.begin(), values.end(), element.data.begin(),
                   [](std::uint8_t value) { return static_cast<std::byte>(value); });
    return element;
}

AbifElement FromDate(std::int16_t monthAndDay, std::int16_t year) {
    AbifElement element{AbifType::Date, 4, 1, {}};
    const std::uint32_t packed = static_cast<std::uint16_t>(monthAndDay);
    Put16(element.data, static_cast<std::uint16_t>(year));
    Put8(element.data, packed);
    Put8(element.data, packed >> 8);
    return element;
}

AbifElement FromTime(std::span<const std::uint8_t> values) {
    AbifElement element{AbifType::Time, 4, 1, {}};
    for (const std::size_t i : {3, 2, 1, 0})
        Put8(element.data, values[i]);
    return element;
}

// The subtraction comes first because it is exact near 100, where the errors are small.
std::uint32_t QualityOf(double percent, double highest) {
    if (!(percent > 0.0)) return 0;
    const double error = (100.0 - percent) / 100.0;
    const double quality = error > 0.0 ? std::min(-10.0 * std::log10(error), highest) : highest;
    return static_cast<std::uint32_t>(std::lround(quality));
}

}  // namespace

AbifElement MakeAbifElement(const std::string& name, const CTagValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return FromText(*text);
    if (const auto* number = std::get_if<std::int16_t>(&value)) return FromShorts({number, 1});
    if (const auto* shorts = std::get_if<CShortsArray>(&value)) {
        const auto all = shorts->All();
        return name == "RUND" && all.size() == 2 ? FromDate(all[0], all[1]) : FromShorts(all);
    }
    if (const auto* bytes = std::get_if<CBytesArray>(&value)) {
        const auto all = bytes->All();
        return name == "RUNT" && all.size() == 4 ? FromTime(all) : FromBytes(all);
    }
    return {};
}

AbifElement QualitiesFromPercent(std::span<const float> percent) {
    AbifElement qualities;
    for (const float value : percent)
        Put8(qualities.data, QualityOf(static_cast<double>(value), highestQuality));
    qualities.count = static_cast<std::uint32_t>(qualities.data.size());
    return qualities;
}

AbifElement QualitiesFromWholePercent(const AbifElement& percent) {
    AbifElement qualities;
    for (std::size_t i = 0; i + 1 < percent.data.size(); i += 2) {
        const auto word =
            std::to_integer<std::uint16_t>(percent.data[i]) << 8 | std::to_integer<std::uint16_t>(percent.data[i + 1]);
        Put8(qualities.data, QualityOf(static_cast<std::int16_t>(word), highestOfWholePercent));
    }
    qualities.count = static_cast<std::uint32_t>(qualities.data.size());
    return qualities;
}
