#include "samplestore/RsdFile.h"

#include <random>

#include "SampleFixture.h"

namespace {

using sampletest::Bytes;
using sampletest::NumberedScans;
using sampletest::RawInfo;
using sampletest::ReadBytes;
using sampletest::SetWord;
using sampletest::WordAt;
using sampletest::WriteBytes;
using sampletest::XorOfFile;

constexpr std::size_t trailerSize = 632;

class RsdFile : public sampletest::SampleTest {
  protected:
    std::string MakeSample(std::uint32_t scans = 10) {
        const std::string path = Path("a.rsd");
        EXPECT_EQ(WriteSample(path, RawInfo(scans), NumberedScans(scans)), 0);
        return path;
    }

    static std::int32_t OpenAndRead(const std::string& path) {
        CRsdFile file;
        CSampleInfo info;
        EXPECT_EQ(file.Open(path, true), 0);
        return file.ReadInfo(info);
    }

    static void Update(const std::string& path, const CSampleInfo* info, const std::vector<ScanRecord>* scans,
                       std::int32_t expected = 0) {
        CRsdFile file;
        ASSERT_EQ(file.Open(path, false), 0);
        EXPECT_EQ(file.Open(path, false), -1);
        if (info) file.WriteInfo(*info);
        if (scans) file.WriteScans(*scans);
        EXPECT_EQ(file.Close(), expected);
    }

    // A sample with `at` bytes into its trailer replaced by a word.
    std::string WithTrailerWord(std::size_t at, std::uint32_t word) {
        Bytes bytes = ReadBytes(MakeSample());
        SetWord(bytes, bytes.size() - trailerSize + at, word);
        WriteBytes(Path("damaged.rsd"), bytes);
        return Path("damaged.rsd");
    }
};

TEST_F(RsdFile, LayoutAndChecksum) {
    const Bytes bytes = ReadBytes(MakeSample(7));
    const std::size_t trailer = bytes.size() - trailerSize;
    EXPECT_EQ(std::string(&bytes[trailer + 450], &bytes[trailer + 454]), "ESD1");
    EXPECT_EQ(WordAt(bytes, trailer + 458), trailer - 140);
    EXPECT_EQ(WordAt(bytes, trailer + 454), bytes.size() - 140);
    EXPECT_EQ(WordAt(bytes, 6 * 20 + 4), 1006u);
    EXPECT_EQ(bytes[trailer + 146 + 30], 'f');
    EXPECT_EQ(XorOfFile(Path("a.rsd")), 0u);
}

TEST_F(RsdFile, WithoutTreeOnlyTheTrailerIsRead) {
    const std::string path = Path("bare.esd");
    CSampleInfo info = RawInfo(3);
    std::vector<ScanRecord> scans;
    info.plateColumns = 24;
    ASSERT_EQ(WriteBareSample(path, info, NumberedScans(3)), 0);
    EXPECT_EQ(ReadBytes(path).size(), 60 + trailerSize);
    EXPECT_EQ(XorOfFile(path), 0u);
    sampletest::ReadBack(path, info, scans);
    EXPECT_EQ(info.sampleName + info.plateId + info.channel[0].filter, "");
    EXPECT_EQ(info.plateColumns, 24);
    EXPECT_EQ(info.plateRows, 8);  // stored as 0
    EXPECT_EQ(info.channelBase[0][0], 'T');

    info.comment = "now with a tree";
    Update(path, &info, nullptr);
    sampletest::ReadBack(path, info, scans);
    EXPECT_EQ(info.comment, "now with a tree");
    ASSERT_EQ(scans.size(), 3u);
    EXPECT_EQ(scans[2].words, NumberedScans(3)[2].words);
}

TEST_F(RsdFile, EveryKindOfCommitKeepsTheChecksum) {
    const std::string path = MakeSample(50);
    CSampleInfo info = RawInfo(50);
    std::vector<ScanRecord> scans;
    const auto expect = [&](std::size_t comment, std::size_t count) {
        EXPECT_EQ(XorOfFile(path), 0u);
        sampletest::ReadBack(path, info, scans);
        EXPECT_EQ(info.comment.size(), comment);
        ASSERT_EQ(scans.size(), count);
        EXPECT_TRUE(scans.empty() || scans.back().words == NumberedScans(300)[count - 1].words);
    };
    for (const std::size_t length : {3001u, 2u}) {
        info.comment = std::string(length, 'c');
        Update(path, &info, nullptr);
        expect(length, 50);
    }
    const std::size_t tailSize = ReadBytes(path).size() - 50 * scanRecordSize;
    for (const std::uint32_t count : {9u, 300u, 0u}) {
        const auto replacement = NumberedScans(count);
        Update(path, nullptr, &replacement);
        expect(2, count);
        EXPECT_EQ(ReadBytes(path).size(), count * scanRecordSize + tailSize);
    }
    info.comment = "both";
    const auto replacement = NumberedScans(5);
    Update(path, &info, &replacement);
    expect(4, 5);
}

TEST_F(RsdFile, UnknownBytesAndKeysSurvive) {
    const std::string path = MakeSample();
    Bytes bytes = ReadBytes(path);
    const std::size_t kept[] = {462, 495, 496, 504, 567, 592, 624, 627};
    for (const std::size_t at : kept)
        bytes[bytes.size() - trailerSize + at] = 0x5A;
    // A key of another program, in place of one of ours.
    const std::string ours = "MACHINE ID", theirs = "Machine no";
    auto found = std::search(bytes.begin(), bytes.end(), ours.begin(), ours.end());
    ASSERT_NE(found, bytes.end());
    std::copy(theirs.begin(), theirs.end(), found);
    WriteBytes(path, bytes);

    CSampleInfo info;
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(path, info, scans);
    Update(path, &info, &scans);
    const Bytes after = ReadBytes(path);
    for (const std::size_t at : kept)
        EXPECT_EQ(after[after.size() - trailerSize + at], 0x5A) << at;
    for (const std::string& key : {ours, theirs})
        EXPECT_NE(std::search(after.begin(), after.end(), key.begin(), key.end()), after.end());
}

TEST_F(RsdFile, ReadOnlyFilesAreNotWritten) {
    const std::string path = MakeSample();
    const Bytes before = ReadBytes(path);
    CRsdFile file;
    CSampleInfo info;
    EXPECT_EQ(file.Open(Path("none.rsd"), true), ENOENT);
    ASSERT_EQ(file.Open(path, true), 0);
    EXPECT_EQ(file.WriteInfo(info), 13);
    EXPECT_EQ(file.WriteScans(NumberedScans(1)), 13);
    EXPECT_EQ(file.Commit(), 13);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(ReadBytes(path), before);
}

TEST_F(RsdFile, DamagedSizesAndVersions) {
    const auto version = [this](float value) {
        return OpenAndRead(WithTrailerWord(604, std::bit_cast<std::uint32_t>(value)));
    };
    EXPECT_EQ(version(1.0f), 34);
    EXPECT_EQ(version(1.1f), 0);
    EXPECT_EQ(version(1000.0f), 0);
    EXPECT_EQ(version(1001.0f), 34);
    EXPECT_EQ(version(std::bit_cast<float>(0x7FC00000u)), 34);

    EXPECT_EQ(OpenAndRead(WithTrailerWord(458, 1000001)), 1);
    EXPECT_EQ(OpenAndRead(WithTrailerWord(458, 0xFFFFFFFF)), 1);
    EXPECT_EQ(OpenAndRead(WithTrailerWord(458, 999999)), 34);
    EXPECT_EQ(OpenAndRead(WithTrailerWord(454, 0)), 34);

    // A total size beyond the file: nothing before it can be counted, nor stored.
    const std::string path = WithTrailerWord(454, 1000000);
    const Bytes before = ReadBytes(path);
    const auto scans = NumberedScans(1);
    Update(path, nullptr, &scans, 34);
    EXPECT_EQ(ReadBytes(path), before);

    WriteBytes(Path("short.rsd"), Bytes(631));
    EXPECT_EQ(OpenAndRead(Path("short.rsd")), EINVAL);
}

// An update of the description leaves the scans alone: a remainder stays, and so does an error in the checksum.
TEST_F(RsdFile, UpdateOfTheDescriptionLeavesTheScans) {
    const std::string path = MakeSample(10);
    Bytes bytes = ReadBytes(path);
    bytes[5] ^= 0x40;
    bytes.insert(bytes.begin() + 200, {1, 2, 3, 4, 1, 2, 3, 4});
    WriteBytes(path, bytes);
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(path, info, scans);
    EXPECT_EQ(scans.size(), 10u);
    info.comment = "changed";
    Update(path, &info, nullptr);
    const Bytes after = ReadBytes(path);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.begin() + 208, after.begin()));
    EXPECT_EQ(XorOfFile(path), 0x4000u);
}

TEST_F(RsdFile, TreeWithoutEndMarkerIsStoredAnew) {
    const std::string path = MakeSample();
    Bytes bytes = ReadBytes(path);
    bytes[200] = 0x67;  // the first item now reaches beyond the tree
    WriteBytes(path, bytes);
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(path, info, scans);
    EXPECT_EQ(info.plateId, "");
    info.plateId = "again";
    Update(path, &info, nullptr);
    sampletest::ReadBack(path, info, scans);
    EXPECT_EQ(info.plateId, "again");
}

// Files with any bytes in tree and trailer changed are read, updated and read again, or refused.
TEST_F(RsdFile, DamagedFiles) {
    const Bytes good = ReadBytes(MakeSample(20));
    const std::string path = Path("damaged.rsd");
    std::mt19937 random(777);
    for (int round = 0; round < 600; ++round) {
        Bytes bytes = good;
        for (unsigned i = random() % 6 + 1; i > 0; --i) {
            const std::size_t size = random() % 2 ? bytes.size() - 400 : 180;  // from the scans' end, or the sizes
            bytes[bytes.size() - size + random() % std::min<std::size_t>(size, 400)] =
                static_cast<std::uint8_t>(random() % 2 ? random() : random() % 4);
        }
        if (random() % 8 == 0) bytes.resize(random() % bytes.size());
        WriteBytes(path, bytes);
        CRsdFile file;
        CSampleInfo info;
        std::uint32_t count = 0;
        ASSERT_EQ(file.Open(path, false), 0);
        if (file.ReadInfo(info) != 0) continue;
        if (file.GetScanCount(count) == 0) {
            std::vector<ScanRecord> scans(count);
            EXPECT_EQ(file.ReadScans(scans), 0);
        }
        file.WriteInfo(info);
        if (round % 2) file.WriteScans(NumberedScans(5));
        file.Close();
    }
}

}  // namespace
