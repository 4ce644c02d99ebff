// SPDX-License-Identifier: MIT
// Small readers of SCF and ABIF files for the tests, written from the published layouts and not from the writers.
#pragma once

#include <gtest/gtest.h>
#include <array>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/Files.h"

class CBigEndianReader {
  public:
    explicit CBigEndianReader(const std::string& path) {
        if (platform::ReadFile(path, text)) throw std::runtime_error("cannot read " + path);
    }
    std::uint32_t Number(std::size_t offset, int bytes) const {
        std::uint32_t value = 0;
        for (const char c : text.substr(offset, static_cast<std::size_t>(bytes)))
            value = value << 8 | static_cast<unsigned char>(c);
        return value;
    }
    std::string text;
};

struct ScfContent {
    std::array<std::vector<int>, 4> curves;  // A, C, G, T
    std::vector<std::uint32_t> peaks;
    std::string letters, comments;
};

inline ScfContent ReadScf(const std::string& path) {
    const CBigEndianReader file(path);
    const std::size_t scans = file.Number(4, 4), bases = file.Number(12, 4);
    std::size_t at = file.Number(8, 4);
    ScfContent content;
    for (auto& curve : content.curves) {
        std::uint16_t slope = 0, value = 0;
        for (std::size_t i = 0; i < scans; ++i, at += 2) {
            slope = static_cast<std::uint16_t>(slope + file.Number(at, 2));
            value = static_cast<std::uint16_t>(value + slope);
            curve.push_back(value);
        }
    }
    at = file.Number(24, 4);
    for (std::size_t i = 0; i < bases; ++i)
        content.peaks.push_back(file.Number(at + 4 * i, 4));
    EXPECT_EQ(file.text.substr(at + 4 * bases, 4 * bases), std::string(4 * bases, '\0'));
    content.letters = file.text.substr(at + 8 * bases, bases);
    content.comments = file.text.substr(file.Number(32, 4), file.Number(28, 4));
    EXPECT_EQ(file.Number(32, 4) + file.Number(28, 4), file.text.size());
    EXPECT_EQ(content.comments.back(), '\0');
    content.comments.pop_back();
    return content;
}

struct AbifEntry {
    int type;
    std::uint32_t count;
    std::string data;

    std::vector<int> Shorts() const {
        std::vector<int> values;
        for (std::size_t i = 0; i + 1 < data.size(); i += 2)
            values.push_back(static_cast<std::int16_t>(static_cast<unsigned char>(data[i]) << 8 |
                                                       static_cast<unsigned char>(data[i + 1])));
        return values;
    }
    std::string Text() const { return type == 18 ? data.substr(1) : data.substr(0, data.size() - 1); }
};

// Entries by name and number, "DATA1".
inline std::map<std::string, AbifEntry> ReadAbif(const std::string& path) {
    const CBigEndianReader file(path);
    EXPECT_EQ(file.text.substr(0, 10), std::string("ABIF\0etdir", 10));
    std::map<std::string, AbifEntry> entries;
    std::string last;
    for (std::size_t i = 0, at = file.Number(26, 4); i < file.Number(18, 4); ++i, at += 28) {
        EXPECT_LT(std::exchange(last, file.text.substr(at, 8)), file.text.substr(at, 8)) << "directory out of order";
        const std::size_t size = file.Number(at + 16, 4);
        const std::size_t offset = size <= 4 ? at + 20 : file.Number(at + 20, 4);
        entries[file.text.substr(at, 4) + std::to_string(file.Number(at + 4, 4))] = {
            static_cast<int>(file.Number(at + 8, 2)), file.Number(at + 12, 4), file.text.substr(offset, size)};
    }
    return entries;
}
