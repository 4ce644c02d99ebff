// SPDX-License-Identifier: MIT
// One item of the property tree's byte stream.
//
//   offset  size  content
//   0       1     tag: bits 7 to 2 the type code, bits 1 to 0 L, the number of length bytes
//   1       L     N, unsigned little-endian
//   1 + L   N     payload (none for a subtree and for the end marker)
//
// N is the payload's length in bytes, except for a subtree, where N is twice the number of its pairs. The pairs follow
// the subtree's header directly, so the stream is also a flat row of items.
#pragma once

#include <cstdint>

namespace property {

enum Type : std::uint32_t {
    Subtree = 0,
    Text = 1,       // 8-bit characters with a NUL
    WideText = 2,   // 16-bit characters with a NUL; counts as one value
    Boolean = 8,    // first byte 0 or 1
    Bytes = 25,     // 8-bit
    Words8 = 32,    // values of 8 bytes
    Floats = 36,    // 32-bit
    Shorts = 42,    // 16-bit
    Ints = 44,      // 32-bit
    EndMarker = 63  // always the byte 0xFC
};

constexpr std::uint8_t endMarkerByte = 0xFC;
constexpr std::uint32_t maxLength = 0xFFFFFF;  // three length bytes

}  // namespace property

// An item in the stream. Valid until the buffer is written to or reallocated.
struct CPropertyItem {
    std::uint32_t type = 0;              // a property::Type, or a code that this program does not know
    std::uint32_t count = 0;             // N over the element size; N for a subtree; not set for the end marker
    const std::uint8_t* data = nullptr;  // first payload byte, a subtree's first child, null for the end marker
};
