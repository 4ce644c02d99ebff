// SPDX-License-Identifier: MIT
// The forms in which the ABD export passes a tag to the writer. A tag has a name of four characters and a number. All
// throw CComError when the writer fails.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "tracewriter/IAbdWriter.h"

void AddTextTag(IAbdWriter& writer, const std::string& name, std::int32_t number, const std::string& text);
// The low 16 bits of `value`.
void AddNumberTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t value);
// The first `count` of `values`, which has at least that many. The count of a very long list is negative, because it
// was cut to 16 bits, and there can be no array of that length. An array that cannot be made or filled is reported on
// standard output, and the tag gets an empty value.
void AddBytesTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::span<const std::uint8_t> values,
                 std::int16_t count);
void AddShortsTag(IAbdWriter& writer, const std::string& name, std::int32_t number,
                  std::span<const std::int16_t> values, std::int16_t count);
// Local time of `seconds` since 1 January 1970 as 4 bytes: 0, seconds, minutes, hours.
void AddTimeTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t seconds);
// Local date of `seconds` since 1 January 1970 as 2 shorts: month + 256 * day of the month, year.
void AddDateTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t seconds);
