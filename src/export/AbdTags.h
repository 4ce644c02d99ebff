// The forms in which the ABD export hands a tag to the writer. Each raises CComError when the writer fails.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "tracewriter/IAbdWriter.h"

void AddTextTag(IAbdWriter& writer, const std::string& name, std::int32_t number, const std::string& text);
// Cut to the low 16 bits.
void AddNumberTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t value);
// The first `count` of `values`, which holds as many. A negative count, as a longer list has after its cut to 16 bits,
// cannot be met by any array. When the array cannot be made or filled this is told on standard output and the tag
// goes out empty.
void AddBytesTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::span<const std::uint8_t> values,
                 std::int16_t count);
void AddShortsTag(IAbdWriter& writer, const std::string& name, std::int32_t number,
                  std::span<const std::int16_t> values, std::int16_t count);
// Local time of `seconds` since 1 January 1970 as 4 bytes: 0, seconds, minutes, hours.
void AddTimeTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t seconds);
// Local date of `seconds` since 1 January 1970 as 2 shorts: month + 256 * day of the month, year.
void AddDateTag(IAbdWriter& writer, const std::string& name, std::int32_t number, std::int32_t seconds);
