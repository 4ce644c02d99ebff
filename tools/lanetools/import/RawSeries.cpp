// SPDX-License-Identifier: MIT
#include "lanetools/import/RawSeries.h"

#include <algorithm>
#include <string>

namespace lanetools {

namespace {

using Series = std::vector<std::int64_t>;

constexpr std::int32_t currentNumber = 6;  // DATA 6
constexpr std::uint32_t currentOfNone = 100;
constexpr std::int64_t highestValue = 32767;

Series ReadChannel(const CAbifDirectory& directory, std::int32_t number) {
    const std::string name = "DATA " + std::to_string(number);
    if (directory.IsDamaged("DATA", number)) throw CUnusable("the raw channel " + name + " is damaged");
    if (directory.Count("DATA", number) > mostScans)
        throw CUnusable("the raw channel " + name + " has more than a million values");
    Series channel = directory.Integers("DATA", number);
    if (channel.empty()) throw CUnusable("no raw channel " + name);
    return channel;
}

// `current` holds one element or more.
std::uint32_t CurrentAt(const Series& current, std::size_t scan, std::size_t scanCount) {
    return static_cast<std::uint32_t>(std::max<std::int64_t>(current[scan * current.size() / scanCount], 0));
}

}  // namespace

CRawSeries ReadRawSeries(const CAbifDirectory& directory) {
    CRawSeries raw;
    std::array<Series, channelCount> channels;
    std::size_t shortest = mostScans;
    for (std::size_t i = 0; i < channelCount; ++i) {
        channels[i] = ReadChannel(directory, static_cast<std::int32_t>(i + 1));
        raw.isCut = raw.isCut || channels[i].size() != channels[0].size();
        shortest = std::min(shortest, channels[i].size());
    }
    raw.scans.resize(shortest);
    for (std::size_t i = 0; i < channelCount; ++i) {
        channels[i].resize(shortest);
        const auto [low, high] = std::minmax_element(channels[i].begin(), channels[i].end());
        raw.lifts[i] = std::max<std::int64_t>(-*low, 0);
        raw.isSaturated = raw.isSaturated || *high >= highestValue;
        for (std::size_t scan = 0; scan < shortest; ++scan)
            raw.scans[scan].words[i + 1] = static_cast<std::uint32_t>(channels[i][scan] + raw.lifts[i]);
    }
    const bool isUsable = directory.Count("DATA", currentNumber) <= mostScans;
    const Series current = isUsable ? directory.Integers("DATA", currentNumber) : Series{};
    for (std::size_t scan = 0; scan < shortest; ++scan)
        raw.scans[scan].words[0] = current.empty() ? currentOfNone : CurrentAt(current, scan, shortest);
    return raw;
}

}  // namespace lanetools
