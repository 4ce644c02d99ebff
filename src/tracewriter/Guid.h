// SPDX-License-Identifier: MIT
// 128-bit identifiers of classes and interfaces.
#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

struct Guid {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): the check takes the zero inside for a pointer
    auto operator<=>(const Guid&) const = default;
};

// Reads the usual notation, such as "8F00BB80-5173-11D2-B3B9-006097937554"; any other text does not compile.
consteval Guid ParseGuid(std::string_view text) {
    Guid id;
    int digits = 0;
    for (const char c : text) {
        if (c == '-') continue;
        const int digit = c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
        if (digit < 0) throw "not a hexadecimal digit";
        id.high = id.high << 4 | id.low >> 60;
        id.low = id.low << 4 | static_cast<std::uint64_t>(digit);
        ++digits;
    }
    if (digits != 32) throw "not 32 digits";
    return id;
}
