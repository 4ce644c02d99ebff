// SPDX-License-Identifier: MIT
// A temporary folder with sample files in it.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "samplestore/NewSample.h"
#include "samplestore/RsdFile.h"
#include "support/TempFolder.h"

namespace sampletest {

using Bytes = std::vector<std::uint8_t>;

class SampleTest : public ::testing::Test {
  protected:
    std::string Path(const std::string& name) const { return temp.Path(name); }

    testsupport::TempFolder temp;
};

inline Bytes ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

inline void WriteBytes(const std::string& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
}

inline std::uint32_t WordAt(const Bytes& bytes, std::size_t at) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + at, 4);
    return word;
}

inline void SetWord(Bytes& bytes, std::size_t at, std::uint32_t word) {
    std::memcpy(bytes.data() + at, &word, 4);
}

// Of all 32-bit words; 0 for a file with a good checksum.
inline std::uint32_t XorOfFile(const std::string& path) {
    const Bytes bytes = ReadBytes(path);
    std::uint32_t words = 0;
    for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4)
        words ^= WordAt(bytes, at);
    return words;
}

// Scans whose words show which scan they are.
inline std::vector<ScanRecord> NumberedScans(std::uint32_t count) {
    std::vector<ScanRecord> scans(count);
    for (std::uint32_t i = 0; i < count; ++i)
        scans[i].words = {i, 1000 + i, 2000 + i, 3000 + i, 0xFFFFFF00u + i};
    return scans;
}

inline CSampleInfo RawInfo(std::uint32_t scanCount) {
    CSampleInfo info;
    info.version = 1.2f;
    info.scanCount = scanCount;
    info.plateId = "plate";
    info.sampleName = "sample";
    info.wellId = "B07";
    const char* letters = "TGCA";
    for (std::size_t i = 0; i < channelCount; ++i) {
        info.channelBase[i][0] = letters[i];
        info.channel[i] = {std::string(1, letters[i]), "dye" + std::to_string(i), "filter" + std::to_string(i)};
    }
    return info;
}

inline void ReadBack(const std::string& path, CSampleInfo& info, std::vector<ScanRecord>& scans) {
    CRsdFile file;
    ASSERT_EQ(file.Open(path, true), 0);
    ASSERT_EQ(file.ReadInfo(info), 0);
    std::uint32_t count = 0;
    ASSERT_EQ(file.GetScanCount(count), 0);
    scans.resize(count);
    ASSERT_EQ(file.ReadScans(scans), 0);
    EXPECT_EQ(file.Close(), 0);
}

}  // namespace sampletest
