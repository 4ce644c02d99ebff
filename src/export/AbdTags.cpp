// SPDX-License-Identifier: MIT
#include "export/AbdTags.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "export/Cut.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "tracewriter/ComError.h"
#include "tracewriter/TagValue.h"

namespace {

template <class Element>
CTagValue ArrayValue(std::span<const Element> values, std::int16_t count) {
    auto array = CTagArray<Element>::Create(count);
    if (!array) {
        platform::Print("The SafeArray Allocation Failed");
        return {};
    }
    if (array->Fill(values.first(std::min(values.size(), static_cast<std::size_t>(count)))) < 0) {
        platform::Print("Failed to store Intensity Value");
        return {};
    }
    return *std::move(array);
}

}  // namespace

void AddTextTag(IAbdWriter& writer, const std::string& name, std::int32_t number, const std::string& text) {
    Check(writer.AddTag(name, number, text));
}

void AddNumberTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t value) {
    Check(writer.AddTag(name, number, CutTo16(value)));
}

void AddBytesTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::span<const std::uint8_t> values,
                 std::int16_t count) {
    Check(writer.AddTag(name, number, ArrayValue(values, count)));
}

void AddShortsTag(IAbdWriter& writer, const std::string& name, std::int32_t number,
                  std::span<const std::int16_t> values, std::int16_t count) {
    Check(writer.AddTag(name, number, ArrayValue(values, count)));
}

void AddTimeTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t seconds) {
    const platform::CalendarTime time = platform::LocalCalendar(seconds);
    const std::array<std::uint8_t, 4> bytes{0, CutTo8(time.second), CutTo8(time.minute), CutTo8(time.hour)};
    AddBytesTag(writer, name, number, bytes, bytes.size());
}

void AddDateTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t seconds) {
    const platform::CalendarTime time = platform::LocalCalendar(seconds);
    const std::array<std::int16_t, 2> shorts{CutTo16(time.month + 256 * time.day), CutTo16(time.year)};
    AddShortsTag(writer, name, number, shorts, shorts.size());
}
