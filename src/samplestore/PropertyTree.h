// SPDX-License-Identifier: MIT
// The property tree: typed values under dotted keys ("CHEMISTRY.CHANNEL1.BASE") in one contiguous stream of bytes.
//
// The tree exists only as that stream, in the form in which a sample file stores it; every operation parses and edits
// it in place. A *pair* is a key item (text) followed by a value item; a *level* is a run of pairs in ascending order
// of their keys, ASCII letter case ignored. The top level ends at the end marker, a sub-level after the number of pairs
// that its subtree item gives. An empty tree is the end marker alone. Items are described in PropertyItem.h.
//
// The caller owns the buffer and holds three positions in it: `start` (first byte of the level), `limit` (one past the
// last byte that may be used) and `tail` (the end marker). Positions are valid until the next write. Nothing here reads
// or writes at or after `limit`, whatever the bytes are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "samplestore/PropertyItem.h"

class CPropertyTree {
  public:
    using Position = std::uint8_t*;
    using ConstPosition = const std::uint8_t*;
    static constexpr std::int32_t topLevel = -1;  // as a pair count: up to the end marker

    // --- Items. `data` are the values in memory order; for the two text types a text with its NUL, and then `count`
    // does not matter.
    static std::uint32_t ElementSize(std::uint32_t type);
    // Bytes of the encoded item, with its N and L if asked for. An N above property::maxLength cannot be encoded.
    static std::size_t ItemSize(std::uint32_t type, std::uint32_t count, const void* data, std::size_t* n = nullptr,
                                std::uint32_t* l = nullptr);
    // True if the item at the cursor is valid. With `advance` the cursor moves past it (to a subtree's first child).
    static bool ParseItem(CPropertyItem* item, ConstPosition& cursor, bool advance, ConstPosition limit);
    // True if the item fitted; nothing is written otherwise.
    static bool WriteItem(Position& cursor, ConstPosition limit, std::uint32_t type, std::uint32_t count,
                          const void* data, bool advance);
    // Appends the encoded item to `buffer`. Its size in bytes, or 0 if it cannot be encoded.
    static std::size_t EncodeItem(std::vector<std::uint8_t>& buffer, std::uint32_t type, std::uint32_t count,
                                  const void* data);
    // Writes the end marker without moving on; true if it fitted.
    static bool WriteEnd(Position position, ConstPosition limit);

    // --- Reading

    // True for non-empty components separated by dots.
    static bool IsKeyValid(std::string_view key);
    // Moves the cursor past the `n` / 2 pairs of a subtree and all that is nested in them. False, and the cursor stays,
    // if they do not parse.
    static bool SkipChildren(ConstPosition& cursor, std::uint32_t n, ConstPosition limit);
    // The end marker, or null if an item before it does not parse.
    static ConstPosition FindEnd(ConstPosition start, ConstPosition limit);
    // Searches the level at `start`, which has `pairs` pairs (or is the topLevel). If the key is there: the position of
    // its pair, its value in `item`, and in `pairSize` the bytes to the end of the value (of the header for a subtree).
    // If not: the position where the pair belongs, and a size of 0. Null for a bad key, a stream that does not parse,
    // or a path that leads through a value.
    static ConstPosition Find(std::string_view key, ConstPosition start, CPropertyItem& item, std::size_t& pairSize,
                              std::int32_t pairs, ConstPosition limit);
    // Size in bytes of the pair found from the top level; 0 if it is absent or the stream does not parse.
    static std::size_t Get(std::string_view key, ConstPosition start, CPropertyItem& item, ConstPosition limit);

    // --- Writing

    // Sets a value and makes missing subtrees. Returns the bytes that the pair now takes; 0 if nothing was
    // changed because the key, or a part of its path, has a value of another type; -1 for a bad key or stream, or for
    // lack of room (subtrees made on the way stay). `tail` moves with the end marker. `data` must not lie in the tree's
    // buffer.
    static std::int32_t Put(std::string_view key, Position start, ConstPosition limit, std::uint32_t type,
                            std::uint32_t count, const void* data, Position& tail, std::int32_t pairs = topLevel);
    // The same for values of one type. False if Put would return -1.
    static bool PutString(std::string_view key, const std::string& text, Position start, ConstPosition limit,
                          Position& tail);
    static bool PutBytes(std::string_view key, const std::uint8_t* values, std::uint32_t count, Position start,
                         ConstPosition limit, Position& tail);
    static bool PutShorts(std::string_view key, const std::int16_t* values, std::uint32_t count, Position start,
                          ConstPosition limit, Position& tail);
    static bool PutInts(std::string_view key, const std::int32_t* values, std::uint32_t count, Position start,
                        ConstPosition limit, Position& tail);
    static bool PutFloats(std::string_view key, const float* values, std::uint32_t count, Position start,
                          ConstPosition limit, Position& tail);
};

// The pairs of a tree's top level, found in one walk, for callers that look up many keys: CPropertyTree::Get parses
// everything before its key again each time.
class CPropertyLevel {
  public:
    // `tree` is a whole tree. It must outlive the object and not change meanwhile.
    explicit CPropertyLevel(std::span<const std::uint8_t> tree);
    // True, with the value in `item`, for the keys that CPropertyTree::Get finds.
    bool Get(std::string_view key, CPropertyItem& item) const;

  private:
    struct Pair {
        CPropertyTree::ConstPosition key;  // with its NUL
        CPropertyItem value;
    };

    std::vector<Pair> pairs;  // as far as the stream parses
    CPropertyTree::ConstPosition limit;
};
