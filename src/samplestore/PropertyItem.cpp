// SPDX-License-Identifier: MIT
#include "samplestore/PropertyItem.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <vector>

#include "samplestore/LittleEndian.h"
#include "samplestore/PropertyTree.h"

namespace {

constexpr std::uint32_t typeCodes = 64;  // what six bits hold

std::uint32_t LengthBytes(std::size_t n) {
    return n <= 0xFF ? 1 : n <= 0xFFFF ? 2 : 3;
}

// Bytes of a wide text with its NUL.
std::size_t WideSize(const std::uint8_t* text) {
    std::size_t size = 0;
    while (LoadU16(text + size) != 0)
        size += 2;
    return size + 2;
}

// True for a valid payload of n bytes at `data`, where `room` bytes may be read.
bool IsPayloadValid(std::uint32_t type, const std::uint8_t* data, std::size_t n, std::size_t room) {
    switch (type) {
        case property::Subtree:
            return true;
        case property::Text:
            return n > 0 && n <= room && data[n - 1] == 0;
        case property::WideText: {
            const std::size_t whole = n / 2 * 2;
            return whole > 0 && n <= room && LoadU16(data + whole - 2) == 0;
        }
        case property::Boolean:
            return n > 0 && n <= room && data[0] <= 1;
        default:
            return n <= room;
    }
}

}  // namespace

std::uint32_t CPropertyTree::ElementSize(std::uint32_t type) {
    switch (type) {
        case property::Words8:
            return 8;
        case property::Floats:
        case property::Ints:
            return 4;
        case property::Shorts:
            return 2;
        case property::EndMarker:
            return 0;
        default:
            return 1;
    }
}

std::size_t CPropertyTree::ItemSize(std::uint32_t type, std::uint32_t count, const void* data, std::size_t* n,
                                    std::uint32_t* l) {
    std::size_t payload = std::size_t{count} * ElementSize(type);
    if (type == property::Text) payload = std::strlen(static_cast<const char*>(data)) + 1;
    if (type == property::WideText) payload = WideSize(static_cast<const std::uint8_t*>(data));
    const std::uint32_t lengthBytes = type == property::EndMarker ? 0 : LengthBytes(payload);
    if (n) *n = payload;
    if (l) *l = lengthBytes;
    return 1 + lengthBytes + (type == property::Subtree ? 0 : payload);
}

bool CPropertyTree::ParseItem(CPropertyItem* item, ConstPosition& cursor, bool advance, ConstPosition limit) {
    if (cursor >= limit) return false;
    const std::uint32_t type = *cursor >> 2;
    const std::uint32_t lengthBytes = *cursor & 3;
    if (type == property::EndMarker) {
        if (lengthBytes != 0) return false;
        if (item) {
            item->type = type;
            item->data = nullptr;
        }
        if (advance) ++cursor;
        return true;
    }

    if (static_cast<std::size_t>(limit - cursor) <= 1 + lengthBytes) return false;
    std::uint32_t n = 0;
    for (std::uint32_t i = 0; i < lengthBytes; ++i)
        n |= static_cast<std::uint32_t>(cursor[1 + i]) << (8 * i);
    // Element sizes are powers of two. A load parses hundreds of items, and divisions would take half of that time.
    const std::uint32_t elementSize = ElementSize(type);
    if ((n & (elementSize - 1)) != 0) return false;

    const ConstPosition data = cursor + 1 + lengthBytes;
    if (!IsPayloadValid(type, data, n, static_cast<std::size_t>(limit - data))) return false;
    if (item) *item = {type, type == property::WideText ? 1 : n >> std::countr_zero(elementSize), data};
    if (advance) cursor = type == property::Subtree ? data : data + n;
    return true;
}

bool CPropertyTree::WriteItem(Position& cursor, ConstPosition limit, std::uint32_t type, std::uint32_t count,
                              const void* data, bool advance) {
    std::size_t n = 0;
    std::uint32_t lengthBytes = 0;
    const std::size_t size = ItemSize(type, count, data, &n, &lengthBytes);
    if (type >= typeCodes || n > property::maxLength) return false;
    if (cursor > limit || static_cast<std::size_t>(limit - cursor) < size) return false;

    Position to = cursor;
    *to++ = static_cast<std::uint8_t>(type << 2 | lengthBytes);
    for (std::uint32_t i = 0; i < lengthBytes; ++i)
        *to++ = static_cast<std::uint8_t>(n >> (8 * i));
    if (type != property::Subtree && n > 0) std::memcpy(to, data, n);
    if (advance) cursor += size;
    return true;
}

std::size_t CPropertyTree::EncodeItem(std::vector<std::uint8_t>& buffer, std::uint32_t type, std::uint32_t count,
                                      const void* data) {
    std::size_t n = 0;
    const std::size_t size = ItemSize(type, count, data, &n);
    if (type >= typeCodes || n > property::maxLength) return 0;
    const std::size_t before = buffer.size();
    buffer.resize(before + size);
    Position to = buffer.data() + before;
    WriteItem(to, buffer.data() + buffer.size(), type, count, data, false);
    return size;
}

bool CPropertyTree::WriteEnd(Position position, ConstPosition limit) {
    return WriteItem(position, limit, property::EndMarker, 0, nullptr, false);
}
