// Traces and settings that no instrument makes, each decided by a number, so that a failure can be had again.
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

// What is handed to a library in one conversation.
struct HostileRead {
    std::string name;                           // of its shape
    std::array<std::vector<double>, 5> arrays;  // four channels and the current, of one length
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
    bool OneIn(std::size_t n) { return Below(n) == 0; }
    template <class Value>
    Value Of(std::initializer_list<Value> values) {
        return values.begin()[Below(values.size())];
    }

  private:
    std::mt19937 engine;
};

using Channels = std::array<std::vector<double>, 5>;
constexpr double mostOfARecord = 4294967295.0;  // the greatest value of a sample file

// Peaks as of a read whose spacing, width and height are anyone's guess.
inline void AddRead(Channels& channels, Chance& chance) {
    const std::size_t scans = channels[0].size();
    const double spacing = 4 + 16 * chance.Share(), width = spacing * (0.15 + 0.4 * chance.Share());
    const double height = std::pow(10.0, 1 + 6 * chance.Share()), drift = 0.002 * (chance.Share() - 0.5);
    const auto reach = static_cast<std::int64_t>(4 * width) + 1;
    double step = spacing;
    for (double centre = 300 * chance.Share(); centre < static_cast<double>(scans); centre += step) {
        const std::size_t dye = chance.Below(4);
        const double peak = height * (0.5 + chance.Share());
        const auto middle = static_cast<std::int64_t>(centre);
        for (auto s = std::max<std::int64_t>(middle - reach, 0);
             s < std::min<std::int64_t>(middle + reach, static_cast<std::int64_t>(scans)); ++s)
            channels[dye][static_cast<std::size_t>(s)] +=
                peak * std::exp(-std::pow((static_cast<double>(s) - centre) / width, 2) / 2);
        step = std::clamp(step * (1 + drift), 3.0, 40.0);
    }
}

inline void AddNoise(Channels& channels, Chance& chance, double height) {
    for (auto& channel : channels)
        for (double& value : channel)
            value += height * chance.Share();
}

// Levels that jump at random scans.
inline void AddSteps(Channels& channels, Chance& chance) {
    const std::size_t length = 1 + chance.Below(400);
    for (auto& channel : channels) {
        double level = 0;
        for (double& value : channel) {
            if (chance.OneIn(length)) level = std::pow(10.0, 9 * chance.Share());
            value += level;
        }
    }
}

// Sharp peaks at an even distance, in the channels in turn: the most bases that a trace can be taken for.
inline void AddRhythm(Channels& channels, Chance& chance) {
    const std::size_t distance = 1 + chance.Below(20);
    const double height = std::pow(10.0, 9 * chance.Share());
    for (std::size_t s = 0; s < channels[0].size(); s += distance)
        channels[s / distance % 4][s] = height;
}

inline void Fill(Channels& channels, double value) {
    for (auto& channel : channels)
        std::fill(channel.begin(), channel.end(), value);
}

// One thing that goes wrong with a trace on its way.
inline void Damage(Channels& channels, Chance& chance) {
    const std::size_t scans = channels[0].size(), from = scans > 0 ? chance.Below(scans) : 0, c = chance.Below(4);
    const std::size_t to = from + chance.Below(scans - from + 1);
    switch (chance.Below(7)) {
        case 0:  // a channel missing or stuck
            std::fill(channels[c].begin(), channels[c].end(), chance.Of({0.0, 32767.0, mostOfARecord}));
            break;
        case 1:  // a stretch without signal
            for (auto& channel : channels)
                std::fill(channel.begin() + static_cast<std::ptrdiff_t>(from),
                          channel.begin() + static_cast<std::ptrdiff_t>(to), 0.0);
            break;
        case 2:  // a spike in one channel or in all
            for (std::size_t k = 0; k < 4 && scans > 0; ++k)
                if (k == c || chance.OneIn(2)) channels[k][from] = mostOfARecord;
            break;
        case 3: {  // saturated at some level
            const double limit = std::pow(10.0, 1 + 6 * chance.Share());
            for (auto& channel : channels)
                for (double& value : channel)
                    value = std::min(value, limit);
            break;
        }
        case 4:  // dyes not separated at all
            for (auto& channel : channels)
                channel = channels[c];
            break;
        case 5:  // upside down
            for (auto& channel : channels)
                for (double& value : channel)
                    value = mostOfARecord - value;
            break;
        default:
            AddNoise(channels, chance, std::pow(10.0, 5 * chance.Share()));
    }
}

// The shape and how the channels, of zeros, get it.
struct Shape {
    const char* name;
    void (*draw)(Channels& channels, Chance& chance);
};
inline constexpr Shape shapes[] = {
    {"zeros", [](Channels&, Chance&) {}},
    {"flat",
     [](Channels& c, Chance& chance) {
         Fill(c, chance.Of({1.0, 32767.0, 65535.0}));
     }},
    {"the greatest value everywhere", [](Channels& c, Chance&) { Fill(c, mostOfARecord); }},
    {"a single spike",
     [](Channels& c, Chance& chance) {
         if (!c[0].empty()) c[chance.Below(4)][chance.Below(c[0].size())] = chance.Of({1.0, 30000.0, mostOfARecord});
     }},
    {"noise", [](Channels& c, Chance& chance) { AddNoise(c, chance, std::pow(10.0, 9 * chance.Share())); }},
    {"extremes in turn",
     [](Channels& c, Chance& chance) {
         for (auto& channel : c)
             for (double& value : channel)
                 value = chance.OneIn(2) ? mostOfARecord : 0;
     }},
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

inline float AnyFloat(Chance& chance) {
    using Limits = std::numeric_limits<float>;
    return chance.Of({0.0f, 1.0f, -1.0f, 0.5f, Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                      Limits::max(), Limits::denorm_min()});
}

inline std::int32_t AnyScan(Chance& chance, std::size_t scans) {
    using Limits = std::numeric_limits<std::int32_t>;
    return chance.Of({0, -1, 1, 1407, static_cast<std::int32_t>(scans), static_cast<std::int32_t>(scans / 2),
                      Limits::max(), Limits::min()});
}

// Settings around the trace, usual or absurd.
inline void DrawSettings(HostileRead& read, Chance& chance) {
    read.rate = chance.OneIn(4) ? AnyFloat(chance) : chance.Of({1.76f, 2.88f, 2.89f, 3.52f});
    if (chance.OneIn(3)) {
        read.order = chance.Of<const char*>({"", "A", "AAAA", "TGCAN0", "NNNNN", "acgt", "?\xFF *N"});
        while (chance.OneIn(2))
            read.order += static_cast<char>(1 + chance.Below(255));
    }
    if (chance.OneIn(3))
        read.range.emplace(AnyScan(chance, read.arrays[0].size()), AnyScan(chance, read.arrays[0].size()));
    if (chance.OneIn(3))
        for (auto& row : read.matrix)
            for (float& element : row)
                element = chance.OneIn(2) ? AnyFloat(chance) : static_cast<float>(chance.Share());
    read.annotate = chance.OneIn(2);
}

inline HostileRead MakeHostileRead(std::size_t shape, std::size_t scans, std::uint32_t seed) {
    Chance chance(seed);
    HostileRead read;
    read.name = shapes[shape].name;
    for (auto& array : read.arrays)
        array = std::vector<double>(scans);
    shapes[shape].draw(read.arrays, chance);
    for (auto& array : read.arrays)
        for (double& value : array)
            value = std::floor(std::clamp(value, 0.0, mostOfARecord));
    DrawSettings(read, chance);
    return read;
}

}  // namespace lanecalltest
