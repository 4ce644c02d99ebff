// The sample's description as keys of the property tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "samplestore/SampleInfo.h"

// Reads every key that this program knows from `tree`. A text or array whose key is absent, of another type or behind
// bytes that do not parse becomes empty; a single number keeps its value (the two counts of zones and spacings become
// 0). Per-base data that an old file lacks are made up from its sequence and channelBase.
void ReadKeys(std::span<const std::uint8_t> tree, CSampleInfo& info);

// Stores the description in `tree`, whose end marker stands at offset `tail`; the buffer grows as needed and `tail`
// follows. With a basecallError that key is the last one stored. Keys that this program does not know stay, and so do
// those that it leaves out. False if a key could not be stored.
bool StoreKeys(std::vector<std::uint8_t>& tree, std::size_t& tail, const CSampleInfo& info);

// Grows `tree` if a store of `key` with `dataSize` bytes, subtrees on the way included, might not fit behind `tail`.
// Keys are always stored from the top level, so `tail` is the only position to keep, and as an offset it stays good.
void EnsureRoom(std::vector<std::uint8_t>& tree, std::string_view key, std::size_t tail, std::size_t dataSize);
