// SPDX-License-Identifier: MIT
// Traces and settings that no instrument makes, each decided by a number, so that a failure can be repeated.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace lanecalltest {

using Channels = std::array<std::vector<double>, 5>;  // four channels and the current, of one length
constexpr double mostOfARecord = 4294967295.0;        // the greatest value of a sample file

// What is handed to a library in one conversation.
struct HostileRead {
    Channels arrays;
    float rate = 2.89f;
    std::string order = "ACTGN0";
    std::optional<std::pair<std::int32_t, std::int32_t>> range;
    std::array<std::array<float, 4>, 4> matrix{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    bool annotate = false;
};

// Choices that a number decides, the same with every standard library.
class Chance {
  public:
    explicit Chance(std::uint32_t seed) : engine(seed) {}
    std::size_t Below(std::size_t limit) { return engine() % limit; }
    double Share() { return engine() / 4294967296.0; }
    double Height(double least, double most) { return std::pow(10.0, least + (most - least) * Share()); }
    bool OneIn(std::size_t n) { return Below(n) == 0; }
    template <class Value>
    Value Of(std::initializer_list<Value> values) {
        return values.begin()[Below(values.size())];
    }

  private:
    std::mt19937 engine;
};

template <class Change>
void ForEach(Channels& channels, Change change) {
    for (auto& channel : channels)
        for (double& value : channel)
            value = change(value);
}

// Peaks as of a read with any spacing, width and height.
inline void AddRead(Channels& channels, Chance& chance) {
    const auto scans = static_cast<double>(channels[0].size());
    const double spacing = 4 + 16 * chance.Share(), width = spacing * (0.15 + 0.4 * chance.Share());
    const double height = chance.Height(1, 7), drift = 0.002 * (chance.Share() - 0.5), reach = std::ceil(4 * width);
    double step = spacing;
    for (double centre = 300 * chance.Share(); centre < scans; centre += step) {
        auto& channel = channels[chance.Below(4)];
        const double peak = height * (0.5 + chance.Share()), end = std::min(std::floor(centre) + reach, scans);
        for (double s = std::max(std::floor(centre) - reach, 0.0); s < end; ++s)
            channel[static_cast<std::size_t>(s)] += peak * std::exp(-std::pow((s - centre) / width, 2) / 2);
        step = std::clamp(step * (1 + drift), 3.0, 40.0);
    }
}

inline void AddNoise(Channels& channels, Chance& chance, double height) {
    ForEach(channels, [&](double value) { return value + height * chance.Share(); });
}

// Levels that jump at random scans.
inline void AddSteps(Channels& channels, Chance& chance) {
    const std::size_t length = 1 + chance.Below(400);
    double level = 0;
    ForEach(channels,
            [&](double value) { return value + (chance.OneIn(length) ? level = chance.Height(0, 9) : level); });
}

// Sharp peaks at an even distance, in the channels in turn: the most bases that a trace can be taken for.
inline void AddRhythm(Channels& channels, Chance& chance) {
    const std::size_t distance = 1 + chance.Below(20);
    const double height = chance.Height(0, 9);
    for (std::size_t s = 0; s < channels[0].size(); s += distance)
        channels[s / distance % 4][s] = height;
}

// One thing that goes wrong with a trace on its way.
inline void Damage(Channels& channels, Chance& chance) {
    const std::size_t scans = channels[0].size(), from = scans > 0 ? chance.Below(scans) : 0, c = chance.Below(4);
    const std::size_t length = chance.Below(scans - from + 1), kind = chance.Below(7);
    const double level = chance.Height(1, 7);
    if (kind == 0) channels[c].assign(scans, chance.Of({0.0, 32767.0, mostOfARecord}));  // missing or stuck
    if (kind == 1)
        for (auto& channel : channels)  // a stretch without signal
            std::fill_n(channel.begin() + static_cast<std::ptrdiff_t>(from), length, 0.0);
    for (std::size_t k = 0; kind == 2 && k < 4 && scans > 0; ++k)  // a spike in one channel or several
        if (k == c || chance.OneIn(2)) channels[k][from] = mostOfARecord;
    if (kind == 3) ForEach(channels, [&](double value) { return std::min(value, level); });
    if (kind == 4) channels.fill(std::vector(channels[c]));  // dyes not separated at all
    if (kind == 5) ForEach(channels, [](double value) { return mostOfARecord - value; });
    if (kind == 6) AddNoise(channels, chance, level);
}

// A shape and how the channels, of zeros, get it.
struct Shape {
    const char* name;
    void (*draw)(Channels& channels, Chance& chance);
};
inline constexpr Shape shapes[] = {
    {"flat",
     [](Channels& c, Chance& chance) {
         const double level = chance.Of({0.0, 1.0, 32767.0, 65535.0, mostOfARecord});
         ForEach(c, [&](double) { return level; });
     }},
    {"a single spike",
     [](Channels& c, Chance& chance) {
         if (!c[0].empty()) c[chance.Below(4)][chance.Below(c[0].size())] = chance.Of({1.0, 30000.0, mostOfARecord});
     }},
    {"noise", [](Channels& c, Chance& chance) { AddNoise(c, chance, chance.Height(0, 9)); }},
    {"extremes in turn",
     [](Channels& c, Chance& chance) { ForEach(c, [&](double) { return chance.OneIn(2) ? mostOfARecord : 0; }); }},
    {"steps", AddSteps},
    {"rhythm", AddRhythm},
    {"read", AddRead},
    {"damaged read",
     [](Channels& c, Chance& chance) {
         AddRead(c, chance);
         for (std::size_t times = 1 + chance.Below(3); times > 0; --times)
             Damage(c, chance);
     }},
};
inline constexpr std::size_t shapeCount = std::size(shapes);

// Settings around the trace, usual or absurd.
inline void DrawSettings(HostileRead& read, Chance& chance) {
    using Limits = std::numeric_limits<float>;
    const auto anyFloat = [&] {
        return chance.Of({0.0f, 1.0f, -1.0f, 0.5f, Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                          Limits::max(), Limits::denorm_min()});
    };
    const auto anyScan = [&] {
        const auto scans = static_cast<std::int32_t>(read.arrays[0].size());
        return chance.Of({0, -1, 1, 1407, scans, scans / 2, INT32_MAX, INT32_MIN});
    };
    read.rate = chance.OneIn(4) ? anyFloat() : chance.Of({1.76f, 2.88f, 2.89f, 3.52f});
    if (chance.OneIn(3)) {
        read.order = chance.Of<const char*>({"", "A", "AAAA", "TGCAN0", "NNNNN", "acgt", "?\xFF *N"});
        while (chance.OneIn(2))
            read.order += static_cast<char>(1 + chance.Below(255));
    }
    if (chance.OneIn(3)) read.range = {anyScan(), anyScan()};
    const bool isAnyMatrix = chance.OneIn(3);
    for (auto& row : read.matrix)
        for (float& element : row)
            if (isAnyMatrix) element = chance.OneIn(2) ? anyFloat() : static_cast<float>(chance.Share());
    read.annotate = chance.OneIn(2);
}

inline HostileRead MakeHostileRead(std::size_t shape, std::size_t scans, std::uint32_t seed) {
    Chance chance(seed);
    HostileRead read;
    read.arrays.fill(std::vector<double>(scans));
    shapes[shape].draw(read.arrays, chance);
    ForEach(read.arrays, [](double value) { return std::floor(std::clamp(value, 0.0, mostOfARecord)); });
    DrawSettings(read, chance);
    return read;
}

}  // namespace lanecalltest
