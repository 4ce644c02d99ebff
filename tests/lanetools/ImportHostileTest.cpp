// SPDX-License-Identifier: MIT
// The reader of ABIF files with bytes that lie. Under the sanitizers no read past the end goes unseen.
#include <gtest/gtest.h>

#include "lanetools/InstrumentFile.h"
#include "lanetools/import/AbifDirectory.h"
#include "lanetools/import/InstrumentSample.h"
#include "samplestore/SampleFixture.h"

namespace {

using lanetools::CAbifDirectory;
using lanetools::CUnusable;
using sampletest::Bytes;
using sampletest::ReadBytes;

constexpr std::size_t entrySize = 28;
constexpr std::size_t countAt = 12, sizeAt = 16, offsetAt = 20;  // in an entry

void Put(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

// A copy of exactly this length, so that a sanitizer sees the end.
std::string Reason(const Bytes& bytes) {
    const Bytes exact(bytes.begin(), bytes.end());
    try {
        lanetools::ReadInstrumentSample(std::as_bytes(std::span(exact)));
        return "";
    } catch (const CUnusable& unusable) {
        return unusable.what();
    }
}

class ImportHostileTest : public sampletest::SampleTest {
  protected:
    void SetUp() override {
        lanetoolstest::CInstrumentFile file;
        file.Moment(1, 2024, 5, 1, {10, 20, 30});
        file.Text("CMNT", "a comment").Text("TUBE", "A1");
        whole = ReadBytes(file.Write(Path("whole.ab1")));
        ASSERT_EQ(Reason(whole), "");
    }
    // Offset of the first entry of this name.
    std::size_t EntryOf(const std::string& name) const {
        const std::string text(whole.begin(), whole.end());
        return text.find(name, text.size() - entrySize * whole[21]);  // it has fewer than 256 entries, at its end
    }

    Bytes whole;
};

TEST_F(ImportHostileTest, CutAtAnyLengthItIsRefused) {
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string reason = Reason(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        EXPECT_EQ(reason, length < 34 ? "it is not an ABIF file" : "damaged: the directory is not within the file")
            << length;
    }
}

TEST_F(ImportHostileTest, AnyByteMayBeAnother) {
    std::size_t refused = 0;
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const std::uint8_t value : {0x00, 0x7F, 0x80, 0xFF}) {
            Bytes changed = whole;
            changed[at] = value;
            refused += Reason(changed).empty() ? 0 : 1;
        }
    EXPECT_GT(refused, 100u);
}

TEST_F(ImportHostileTest, NumbersOfTheDirectoryAreComparedWithTheFile) {
    const std::size_t data = EntryOf("DATA"), directory = 6;
    const auto with = [&](std::size_t at, std::uint32_t value) {
        Bytes changed = whole;
        Put(changed, at, value);
        return Reason(changed);
    };
    const std::string outside = "damaged: the directory is not within the file";
    for (const std::uint32_t value : {2'000'000'000u, 0xFFFFFFFFu, 0x80000000u}) {
        EXPECT_EQ(with(directory + countAt, value), outside);
        EXPECT_EQ(with(directory + offsetAt, value), outside);
        EXPECT_EQ(with(data + countAt, value), "the raw channel DATA 1 is damaged");
        EXPECT_EQ(with(data + sizeAt, value), "the raw channel DATA 1 is damaged");
        EXPECT_EQ(with(data + offsetAt, value), "the raw channel DATA 1 is damaged");
    }
    EXPECT_EQ(with(directory + 8, 0x03FF0000), outside);  // entries of no size
    EXPECT_EQ(with(data + countAt, 0), "the raw channel DATA 1 is damaged");
    EXPECT_EQ(with(EntryOf("CMNT") + offsetAt, 0xFFFFFFF0), "");  // a comment is lost, not the sample
}

TEST_F(ImportHostileTest, EntriesMayOverlapAndAForeignHeaderIsSkipped) {
    Bytes changed = whole;
    const std::size_t first = EntryOf("DATA"), second = first + entrySize;
    std::copy_n(changed.begin() + static_cast<std::ptrdiff_t>(first + offsetAt), 4,
                changed.begin() + static_cast<std::ptrdiff_t>(second + offsetAt));
    changed.insert(changed.begin(), 128, 1);
    const auto sample = lanetools::ReadInstrumentSample(std::as_bytes(std::span(changed)));
    ASSERT_EQ(sample.scans.size(), 6u);
    EXPECT_EQ(sample.scans[5].words[1], 6u);
    EXPECT_EQ(sample.scans[5].words[2], 6u);
    EXPECT_EQ(sample.info.wellId, "A01");
}

TEST_F(ImportHostileTest, ValuesOfEveryTypeAreRead) {
    const auto valueOf = [&](std::uint32_t type, std::uint32_t count, const Bytes& value) {
        Bytes changed = whole;
        const std::size_t entry = EntryOf("CMNT"), at = changed.size();
        Put(changed, entry + 8, type << 16);
        Put(changed, entry + countAt, count);
        Put(changed, entry + sizeAt, static_cast<std::uint32_t>(value.size()));
        if (value.size() > 4)
            Put(changed, entry + offsetAt, static_cast<std::uint32_t>(at));
        else
            std::copy(value.begin(), value.end(), changed.begin() + static_cast<std::ptrdiff_t>(entry + offsetAt));
        changed.insert(changed.end(), value.begin(), value.end());
        const CAbifDirectory directory(std::as_bytes(std::span(changed)));
        const auto number = directory.Number("CMNT");
        return number ? std::to_string(*number) : directory.Text("CMNT");
    };
    EXPECT_EQ(valueOf(1, 1, {0xFF}), "255.000000");
    EXPECT_EQ(valueOf(2, 1, {0xFF}), "-1.000000");
    EXPECT_EQ(valueOf(3, 1, {0xFF, 0xFE}), "65534.000000");
    EXPECT_EQ(valueOf(4, 1, {0xFF, 0xFE}), "-2.000000");
    EXPECT_EQ(valueOf(5, 1, {0x80, 0, 0, 0}), "-2147483648.000000");
    EXPECT_EQ(valueOf(6, 1, {0, 0, 0, 3, 0, 0, 0, 2}), "1.500000");
    EXPECT_EQ(valueOf(6, 1, {0, 0, 0, 3, 0, 0, 0, 0}), "");  // divided by 0
    EXPECT_EQ(valueOf(7, 1, {0x3F, 0x80, 0, 0}), "1.000000");
    EXPECT_EQ(valueOf(8, 1, {0x40, 0, 0, 0, 0, 0, 0, 0}), "2.000000");
    EXPECT_EQ(valueOf(18, 4, {200, 'a', 'b', ' '}), "ab");  // longer than it is
    EXPECT_EQ(valueOf(19, 6, {' ', 'a', 0, 'b', 'c', 'd'}), "a");
    EXPECT_EQ(valueOf(18, 0, {}), "");
}

}  // namespace
