// SPDX-License-Identifier: MIT
#include "lanetools/import/AbifDirectory.h"

#include <bit>

#include "platform/Ascii.h"

namespace lanetools {

namespace {

using ByteSpan = std::span<const std::byte>;

enum Type : std::uint16_t {
    Byte = 1,
    Char = 2,
    Word = 3,
    Short = 4,
    Long = 5,
    Rational = 6,
    Float = 7,
    Double = 8,
    DateType = 10,
    TimeType = 11,
    PString = 18,
    CString = 19,
};

constexpr std::size_t entrySize = 28;
constexpr std::size_t headerEntry = 6;      // offset of the directory's own entry
constexpr std::size_t foreignHeader = 128;  // bytes before "ABIF" in some files
constexpr std::size_t longestInEntry = 4;   // bytes of a value that is stored in its entry
constexpr std::string_view whiteSpace = " \t\r\n\v\f";

// 0 for a type that is not read.
std::size_t ElementSize(std::uint16_t type) {
    switch (type) {
        case Byte:
        case Char:
        case PString:
        case CString:
            return 1;
        case Word:
        case Short:
            return 2;
        case Long:
        case Float:
        case DateType:
        case TimeType:
            return 4;
        case Rational:
        case Double:
            return 8;
        default:
            return 0;
    }
}

// --- Big-endian numbers at an offset, which the caller has checked.

std::uint64_t Get(ByteSpan bytes, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (const std::byte byte : bytes.subspan(at, size))
        value = value << 8 | std::to_integer<std::uint64_t>(byte);
    return value;
}
std::uint32_t Get32(ByteSpan bytes, std::size_t at) {
    return static_cast<std::uint32_t>(Get(bytes, at, 4));
}
std::uint16_t Get16(ByteSpan bytes, std::size_t at) {
    return static_cast<std::uint16_t>(Get(bytes, at, 2));
}
std::uint8_t Get8(ByteSpan bytes, std::size_t at) {
    return std::to_integer<std::uint8_t>(bytes[at]);
}
std::int32_t GetLong(ByteSpan bytes, std::size_t at) {
    return static_cast<std::int32_t>(Get32(bytes, at));
}

std::string_view Characters(ByteSpan bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// True if `size` bytes from `at` on are within a file of `length` bytes; the sum may exceed 64 bits.
bool IsWithin(std::uint64_t at, std::uint64_t size, std::size_t length) {
    return at <= length && size <= length - at;
}

std::int64_t Integer(std::uint16_t type, ByteSpan element) {
    switch (type) {
        case Byte:
            return Get8(element, 0);
        case Char:
            return static_cast<std::int8_t>(Get8(element, 0));
        case Word:
            return Get16(element, 0);
        case Short:
            return static_cast<std::int16_t>(Get16(element, 0));
        default:
            return GetLong(element, 0);
    }
}

ByteSpan FindStart(ByteSpan file) {
    for (const std::size_t start : {std::size_t{0}, foreignHeader})
        if (IsWithin(start, headerEntry + entrySize, file.size()) && Characters(file.subspan(start, 4)) == "ABIF")
            return file.subspan(start);
    if (Characters(file).starts_with(".scf"))
        throw CUnusable("an SCF file: it has processed data only, which cannot be called");
    throw CUnusable("it is not an ABIF file");
}

}  // namespace

CAbifDirectory::CAbifDirectory(ByteSpan file) : bytes(FindStart(file)) {
    const std::size_t size = Get16(bytes, headerEntry + 10);
    const std::uint64_t count = Get32(bytes, headerEntry + 12);
    const std::uint64_t offset = Get32(bytes, headerEntry + 20);
    if (size < entrySize || !IsWithin(offset, count * size, bytes.size()))
        throw CUnusable("damaged: the directory is not within the file");
    for (std::size_t at = offset, end = at + count * size; at != end; at += size) {
        const CEntry entry = ReadEntry(at);
        const auto [place, isNew] =
            entries.try_emplace({Characters(bytes.subspan(at, 4)), GetLong(bytes, at + 4)}, entry);
        if (!isNew && !entry.isDamaged) place->second = entry;
    }
}

CAbifDirectory::CEntry CAbifDirectory::ReadEntry(std::size_t at) const {
    CEntry entry;
    entry.type = Get16(bytes, at + 8);
    const std::uint64_t count = Get32(bytes, at + 12);
    const std::size_t size = Get32(bytes, at + 16);
    const std::size_t start = size <= longestInEntry ? at + 20 : Get32(bytes, at + 20);
    const std::size_t elementSize = ElementSize(entry.type);
    entry.isDamaged = !IsWithin(start, size, bytes.size()) || (elementSize != 0 && count * elementSize != size);
    if (!entry.isDamaged && elementSize != 0) entry.value = bytes.subspan(start, size);
    return entry;
}

const CAbifDirectory::CEntry* CAbifDirectory::Find(std::string_view name, std::int32_t number) const {
    const auto found = entries.find({name, number});
    return found == entries.end() ? nullptr : &found->second;
}

bool CAbifDirectory::IsDamaged(std::string_view name, std::int32_t number) const {
    const CEntry* entry = Find(name, number);
    return entry != nullptr && entry->isDamaged;
}

std::size_t CAbifDirectory::Count(std::string_view name, std::int32_t number) const {
    const CEntry* entry = Find(name, number);
    const std::size_t size = entry == nullptr ? 0 : ElementSize(entry->type);
    return size == 0 ? 0 : entry->value.size() / size;
}

std::string CAbifDirectory::Text(std::string_view name, std::int32_t number) const {
    const CEntry* entry = Find(name, number);
    if (entry == nullptr || entry->value.empty()) return {};
    std::string_view text = Characters(entry->value);
    if (entry->type == PString)
        text = text.substr(1, Get8(entry->value, 0));
    else if (entry->type != Byte && entry->type != Char && entry->type != CString)
        return {};
    return std::string(platform::Trim(text.substr(0, text.find('\0')), whiteSpace));
}

std::optional<double> CAbifDirectory::Number(std::string_view name, std::int32_t number) const {
    const CEntry* entry = Find(name, number);
    if (entry == nullptr || entry->value.empty()) return std::nullopt;
    switch (entry->type) {
        case Byte:
        case Char:
        case Word:
        case Short:
        case Long:
            return static_cast<double>(Integer(entry->type, entry->value));
        case Rational:
            if (GetLong(entry->value, 4) == 0) return std::nullopt;
            return static_cast<double>(GetLong(entry->value, 0)) / GetLong(entry->value, 4);
        case Float:
            return static_cast<double>(std::bit_cast<float>(Get32(entry->value, 0)));
        case Double:
            return std::bit_cast<double>(Get(entry->value, 0, 8));
        default:
            return std::nullopt;
    }
}

std::vector<std::int64_t> CAbifDirectory::Integers(std::string_view name, std::int32_t number) const {
    std::vector<std::int64_t> values;
    const CEntry* entry = Find(name, number);
    if (entry == nullptr || entry->type < Byte || entry->type > Long) return values;
    const std::size_t size = ElementSize(entry->type);
    values.reserve(entry->value.size() / size);
    for (std::size_t at = 0; at < entry->value.size(); at += size)
        values.push_back(Integer(entry->type, entry->value.subspan(at, size)));
    return values;
}

std::optional<std::array<int, 3>> CAbifDirectory::Date(std::string_view name, std::int32_t number) const {
    const CEntry* entry = Find(name, number);
    if (entry == nullptr || entry->type != DateType || entry->value.empty()) return std::nullopt;
    return std::array<int, 3>{static_cast<std::int16_t>(Get16(entry->value, 0)), Get8(entry->value, 2),
                              Get8(entry->value, 3)};
}

std::optional<std::array<int, 3>> CAbifDirectory::Time(std::string_view name, std::int32_t number) const {
    const CEntry* entry = Find(name, number);
    if (entry == nullptr || entry->type != TimeType || entry->value.empty()) return std::nullopt;
    return std::array<int, 3>{Get8(entry->value, 0), Get8(entry->value, 1), Get8(entry->value, 2)};
}

}  // namespace lanetools
