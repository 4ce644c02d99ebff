// SPDX-License-Identifier: MIT
// The writing half of the property tree.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "samplestore/PropertyTree.h"

namespace {

using Position = CPropertyTree::Position;
using ConstPosition = CPropertyTree::ConstPosition;

struct Value {
    std::uint32_t type;
    std::uint32_t count;
    const void* data;
};

constexpr Value emptySubtree{property::Subtree, 0, nullptr};
constexpr std::int32_t typeConflict = 0;
constexpr std::int32_t failed = -1;

// Sets a key without dots in the level that begins at `level`. Returns what Put returns.
std::int32_t PutPlain(std::string_view component, Position level, std::int32_t pairs, ConstPosition limit,
                      const Value& value, Position& tail) {
    CPropertyItem stored;
    std::size_t oldSize = 0;
    const ConstPosition found = CPropertyTree::Find(component, level, stored, oldSize, pairs, tail + 1);
    if (!found) return failed;
    if (oldSize > 0 && stored.type != value.type &&
        (stored.type == property::Subtree || value.type != property::Subtree))
        return typeConflict;

    std::vector<std::uint8_t> encoded;
    const std::size_t keySize = CPropertyTree::EncodeItem(encoded, property::Text, 0, std::string(component).c_str());
    if (keySize == 0 || CPropertyTree::EncodeItem(encoded, value.type, value.count, value.data) == 0) return failed;

    const Position pair = level + (found - level);
    if (found > tail || oldSize > static_cast<std::size_t>(tail - pair)) return failed;
    const std::ptrdiff_t growth = static_cast<std::ptrdiff_t>(encoded.size()) - static_cast<std::ptrdiff_t>(oldSize);
    if (growth >= limit - tail) return failed;
    const Position behind = pair + oldSize;
    std::memmove(pair + encoded.size(), behind, static_cast<std::size_t>(tail + 1 - behind));
    std::memcpy(pair, encoded.data(), encoded.size());
    tail += growth;
    return static_cast<std::int32_t>(encoded.size());
}

// Stores one value under a dotted key, level by level.
class DottedPut {
  public:
    DottedPut(std::string_view fullKey, Position levelStart, std::int32_t pairCount, ConstPosition bufferLimit,
              Position& tailPosition)
        : key(fullKey), top(levelStart), limit(bufferLimit), tail(tailPosition), level(levelStart), pairs(pairCount) {}

    std::int32_t Store(const Value& value) {
        std::size_t at = 0;
        for (std::size_t dot = key.find('.'); dot != std::string_view::npos; dot = key.find('.', at)) {
            const std::int32_t entered = Enter(key.substr(at, dot - at));
            if (entered <= 0) return entered;
            parentPath = key.substr(0, dot);
            at = dot + 1;
        }
        return Add(key.substr(at), value);
    }

  private:
    // Enters the subtree of that name, which is made if it is missing. 1, or the result to stop with.
    std::int32_t Enter(std::string_view component) {
        CPropertyItem item;
        std::size_t pairSize = 0;
        ConstPosition found = CPropertyTree::Find(component, level, item, pairSize, pairs, tail + 1);
        if (!found) return failed;
        if (pairSize == 0) {
            const std::int32_t added = Add(component, emptySubtree);
            if (added <= 0) return added;
            const std::int32_t grown = pairs == CPropertyTree::topLevel ? pairs : pairs + 1;
            found = CPropertyTree::Find(component, level, item, pairSize, grown, tail + 1);
            if (!found || pairSize == 0) return failed;
        }
        if (item.type != property::Subtree) return typeConflict;
        if (item.count % 2 != 0) return failed;
        level += item.data - level;
        pairs = static_cast<std::int32_t>(item.count / 2);
        parentLength = item.count;
        return 1;
    }

    // Stores a pair in the present level. If it is new, the parent's count is raised first.
    std::int32_t Add(std::string_view component, const Value& value) {
        CPropertyItem item;
        std::size_t pairSize = 0;
        if (!CPropertyTree::Find(component, level, item, pairSize, pairs, tail + 1)) return failed;
        const bool counts = pairSize == 0 && !parentPath.empty();
        if (counts && !SetParentLength(parentLength + 2)) return failed;
        const std::int32_t stored = PutPlain(component, level, pairs, limit, value, tail);
        if (stored < 0 && counts) SetParentLength(parentLength);  // no pair was stored, so none is counted
        return stored;
    }

    // The parent's header may change its size, which moves everything after it.
    bool SetParentLength(std::uint32_t n) {
        const Position before = tail;
        const std::int32_t stored = CPropertyTree::Put(parentPath, top, limit, property::Subtree, n, nullptr, tail);
        level += tail - before;
        return stored > 0;
    }

    const std::string_view key;
    const Position top;
    const ConstPosition limit;
    Position& tail;
    Position level;                  // where the present level begins
    std::int32_t pairs;              // its pair count
    std::string_view parentPath;     // of the subtree that holds the level; empty at the top
    std::uint32_t parentLength = 0;  // that subtree's N
};

}  // namespace

std::int32_t CPropertyTree::Put(std::string_view key, Position start, ConstPosition limit, std::uint32_t type,
                                std::uint32_t count, const void* data, Position& tail, std::int32_t pairs) {
    if (tail < start || tail >= limit || *tail != property::endMarkerByte || !IsKeyValid(key)) return failed;
    const Value value{type, count, data};
    if (key.find('.') == std::string_view::npos) return PutPlain(key, start, pairs, limit, value, tail);
    return DottedPut(key, start, pairs, limit, tail).Store(value);
}

bool CPropertyTree::PutString(std::string_view key, const std::string& text, Position start, ConstPosition limit,
                              Position& tail) {
    return Put(key, start, limit, property::Text, 0, text.c_str(), tail) >= 0;
}

bool CPropertyTree::PutBytes(std::string_view key, const std::uint8_t* values, std::uint32_t count, Position start,
                             ConstPosition limit, Position& tail) {
    return Put(key, start, limit, property::Bytes, count, values, tail) >= 0;
}

bool CPropertyTree::PutShorts(std::string_view key, const std::int16_t* values, std::uint32_t count, Position start,
                              ConstPosition limit, Position& tail) {
    return Put(key, start, limit, property::Shorts, count, values, tail) >= 0;
}

bool CPropertyTree::PutInts(std::string_view key, const std::int32_t* values, std::uint32_t count, Position start,
                            ConstPosition limit, Position& tail) {
    return Put(key, start, limit, property::Ints, count, values, tail) >= 0;
}

bool CPropertyTree::PutFloats(std::string_view key, const float* values, std::uint32_t count, Position start,
                              ConstPosition limit, Position& tail) {
    return Put(key, start, limit, property::Floats, count, values, tail) >= 0;
}
