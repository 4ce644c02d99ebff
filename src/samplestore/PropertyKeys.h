// SPDX-License-Identifier: MIT
// The sample's description as keys of the property tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "samplestore/SampleInfo.h"

// Reads every key that this program knows from `tree`. If a key is missing, has another type, or follows bytes that do
// not parse, a text or array becomes empty and a single number keeps its value (the counts of zones and spacings become
// 0). Per-base data that an old file lacks are derived from its sequence and channelBase.
void ReadKeys(std::span<const std::uint8_t> tree, CSampleInfo& info);

// Stores the description in `tree`, whose end marker is at byte offset `tail`; the buffer grows as needed and `tail`
// moves with the marker. If there is a basecallError, its key is the last one stored. Other keys in the tree stay.
// False if a key could not be stored; the keys before it are then stored.
bool StoreKeys(std::vector<std::uint8_t>& tree, std::size_t& tail, const CSampleInfo& info);

// Grows `tree` if storing `key` with `dataSize` bytes, including new subtrees on its path, might not fit after `tail`.
// Pointers into the buffer become invalid, offsets stay valid.
void EnsureRoom(std::vector<std::uint8_t>& tree, std::string_view key, std::size_t tail, std::size_t dataSize);
