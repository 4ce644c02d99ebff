// SPDX-License-Identifier: MIT
// One entry of an ABIF file: the type and the stored bytes of a tag's value.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "tracewriter/BigEndian.h"
#include "tracewriter/TagValue.h"

// Type codes of the format that this component writes.
enum class AbifType : std::uint16_t {
    Char = 2,       // 8 bits
    Short = 4,      // signed, 16 bits
    Date = 10,      // year (16 bits), month, day
    Time = 11,      // hour, minute, second, hundredth of a second
    PString = 18,   // a byte with the length, then the characters
    CString = 19,   // the characters, then a NUL
    Folder = 1023,  // the list of entries
};

struct AbifElement {
    AbifType type = AbifType::Char;
    std::uint16_t elementSize = 1;
    std::uint32_t count = 0;
    Bytes data;  // big-endian
};

// How a value that is not empty is stored under a tag:
//
//   text                   PString; CString beyond 255 characters
//   number                 one Short
//   shorts                 Shorts; under "RUND" two of them (month + 256 * day, year) make a Date
//   bytes                  Chars; under "RUNT" four of them (0, seconds, minutes, hours) make a Time
AbifElement MakeAbifElement(const std::string& name, const CTagValue& value);

// Base qualities as readers expect them ("PCON", Chars): -10 log10 of the error probability that each percentage
// leaves, rounded, 0 to 93. 0 also for negative percentages and NaN; 93, the highest that a reader can show as a
// letter, also for 100 and more.
AbifElement QualitiesFromPercent(std::span<const float> percent);
// The same from whole percentages (Shorts), 0 to 40: they do not say how small an error below 1 in 100 is.
AbifElement QualitiesFromWholePercent(const AbifElement& percent);
