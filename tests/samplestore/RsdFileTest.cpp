#include "samplestore/RsdFile.h"

#include <random>

#include "samplestore/PropertyTree.h"
#include "tests/samplestore/SampleFixture.h"

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

class RsdFile : public sampletest::TempFolder {
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
    CSampleInfo info = RawInfo(3), back;
    std::vector<ScanRecord> scans;
    info.plateColumns = 24;
    ASSERT_EQ(WriteBareSample(Path("bare.esd"), info, NumberedScans(3)), 0);
    EXPECT_EQ(ReadBytes(Path("bare.esd")).size(), 60 + trailerSize);
    EXPECT_EQ(XorOfFile(Path("bare.esd")), 0u);
    sampletest::ReadBack(Path("bare.esd"), back, scans);
    EXPECT_EQ(back.sampleName + back.plateId + back.channel[0].filter, "");
    EXPECT_EQ(back.plateColumns, 24);
    EXPECT_EQ(back.plateRows, 8);  // stored as 0
    EXPECT_EQ(back.channelBase[0][0], 'T');
    ASSERT_EQ(scans.size(), 3u);
    EXPECT_EQ(scans[2].words, NumberedScans(3)[2].words);

    CRsdFile file;
    ASSERT_EQ(file.Open(Path("bare.esd"), false), 0);
    info.comment = "now with a tree";
    file.WriteInfo(info);
    ASSERT_EQ(file.Close(), 0);
    sampletest::ReadBack(Path("bare.esd"), back, scans);
    EXPECT_EQ(back.comment, info.comment);
    EXPECT_EQ(back.plateColumns, 24);
    EXPECT_EQ(scans.size(), 3u);
}

TEST_F(RsdFile, EveryKindOfCommitKeepsTheChecksum) {
    const std::string path = MakeSample(50);
    CSampleInfo info = RawInfo(50), back;
    std::vector<ScanRecord> scans;
    CRsdFile file;
    ASSERT_EQ(file.Open(path, false), 0);
    EXPECT_EQ(file.Open(path, false), -1);

    // Description alone, longer and then shorter; the scans stay.
    for (const std::size_t length : {3001u, 2u}) {
        info.comment = std::string(length, 'c');
        EXPECT_EQ(file.WriteInfo(info), 0);
        EXPECT_EQ(file.Commit(), 0);
        EXPECT_EQ(XorOfFile(path), 0u);
        sampletest::ReadBack(path, back, scans);
        EXPECT_EQ(back.comment, info.comment);
        EXPECT_EQ(scans[49].words, NumberedScans(50)[49].words);
    }
    // Scans alone, fewer and then more; the description stays.
    const std::size_t tailSize = ReadBytes(path).size() - 50 * scanRecordSize;
    for (const std::uint32_t count : {9u, 300u}) {
        EXPECT_EQ(file.WriteScans(NumberedScans(count)), 0);
        EXPECT_EQ(file.Commit(), 0);
        EXPECT_EQ(ReadBytes(path).size(), count * scanRecordSize + tailSize);
        EXPECT_EQ(XorOfFile(path), 0u);
        sampletest::ReadBack(path, back, scans);
        EXPECT_EQ(scans.size(), count);
        EXPECT_EQ(back.wellId, "B07");
    }
    // Both at once, without any scans.
    info.barCode = "bar";
    EXPECT_EQ(file.WriteScans({}), 0);
    EXPECT_EQ(file.WriteInfo(info), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(XorOfFile(path), 0u);
    sampletest::ReadBack(path, back, scans);
    EXPECT_TRUE(scans.empty());
    EXPECT_EQ(back.barCode, "bar");
}

// A wrong checksum is no reason to refuse a file, and an update of the description carries the error on.
TEST_F(RsdFile, WrongChecksumIsCarriedOn) {
    const std::string path = MakeSample();
    Bytes bytes = ReadBytes(path);
    bytes[5] ^= 0x40;
    WriteBytes(path, bytes);
    CRsdFile file;
    CSampleInfo info;
    ASSERT_EQ(file.Open(path, false), 0);
    EXPECT_EQ(file.ReadInfo(info), 0);
    info.comment = "changed";
    file.WriteInfo(info);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(XorOfFile(path), 0x4000u);
}

TEST_F(RsdFile, UnknownBytesAndKeysSurvive) {
    const std::string path = MakeSample();
    Bytes bytes = ReadBytes(path);
    const std::size_t trailer = bytes.size() - trailerSize;
    for (const std::size_t at : {462u, 495u, 496u, 504u, 567u, 592u, 624u, 627u})
        bytes[trailer + at] = 0x5A;
    // A key of another program, in place of one of ours.
    const std::string ours = "MACHINE ID", theirs = "Machine no";
    auto found = std::search(bytes.begin(), bytes.end(), ours.begin(), ours.end());
    ASSERT_NE(found, bytes.end());
    std::copy(theirs.begin(), theirs.end(), found);
    WriteBytes(path, bytes);

    CRsdFile file;
    CSampleInfo info;
    ASSERT_EQ(file.Open(path, false), 0);
    ASSERT_EQ(file.ReadInfo(info), 0);
    file.WriteInfo(info);
    file.WriteScans(NumberedScans(2));
    ASSERT_EQ(file.Close(), 0);
    const Bytes after = ReadBytes(path);
    const std::size_t newTrailer = after.size() - trailerSize;
    for (const std::size_t at : {462u, 495u, 496u, 504u, 567u, 592u, 624u, 627u})
        EXPECT_EQ(after[newTrailer + at], 0x5A) << at;
    EXPECT_NE(std::search(after.begin(), after.end(), theirs.begin(), theirs.end()), after.end());
    EXPECT_NE(std::search(after.begin(), after.end(), ours.begin(), ours.end()), after.end());
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
    EXPECT_EQ(OpenAndRead(WithTrailerWord(458, 0)), 0);
    EXPECT_EQ(OpenAndRead(WithTrailerWord(454, 0)), 34);
    EXPECT_EQ(OpenAndRead(WithTrailerWord(454, 0x7FFFFFFF)), 34);

    // A total size beyond the file: nothing before it can be counted, nor stored.
    const std::string path = WithTrailerWord(454, 1000000);
    const Bytes before = ReadBytes(path);
    CRsdFile file;
    std::uint32_t count = 0;
    ASSERT_EQ(file.Open(path, false), 0);
    EXPECT_EQ(file.GetScanCount(count), 34);
    file.WriteScans(NumberedScans(1));
    EXPECT_EQ(file.Close(), 34);
    EXPECT_EQ(ReadBytes(path), before);

    WriteBytes(Path("short.rsd"), Bytes(631));
    EXPECT_EQ(OpenAndRead(Path("short.rsd")), EINVAL);
}

TEST_F(RsdFile, RemainderOfTheScanBlock) {
    const std::string path = MakeSample(10);
    Bytes bytes = ReadBytes(path);
    bytes.insert(bytes.begin() + 200, {1, 2, 3, 4, 5, 6, 7, 8});
    WriteBytes(path, bytes);
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(path, info, scans);
    EXPECT_EQ(scans.size(), 10u);
    CRsdFile file;
    ASSERT_EQ(file.Open(path, false), 0);
    file.WriteInfo(info);
    ASSERT_EQ(file.Close(), 0);
    const Bytes after = ReadBytes(path);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.begin() + 208, after.begin()));
}

TEST_F(RsdFile, TreeWithoutEndMarkerIsStoredAnew) {
    const std::string path = MakeSample();
    Bytes bytes = ReadBytes(path);
    bytes[200] = 0x67;  // the first item now reaches beyond the tree
    WriteBytes(path, bytes);
    CRsdFile file;
    CSampleInfo info;
    ASSERT_EQ(file.Open(path, false), 0);
    ASSERT_EQ(file.ReadInfo(info), 0);
    EXPECT_EQ(info.plateId, "");
    info.plateId = "again";
    file.WriteInfo(info);
    ASSERT_EQ(file.Close(), 0);
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(path, info, scans);
    EXPECT_EQ(info.plateId, "again");
    EXPECT_EQ(scans.size(), 10u);
}

// Files with any bytes in tree and trailer changed are read, updated and read again, or refused.
TEST_F(RsdFile, DamagedFiles) {
    const Bytes good = ReadBytes(MakeSample(20));
    const std::string path = Path("damaged.rsd");
    std::mt19937 random(777);
    for (int round = 0; round < 1500; ++round) {
        Bytes bytes = good;
        for (unsigned i = random() % 6 + 1; i > 0; --i) {
            const std::size_t from = random() % 2 ? 400 : bytes.size() - trailerSize + 454;
            const std::size_t size = from == 400 ? bytes.size() - 400 : 8;
            bytes[from + random() % size] = static_cast<std::uint8_t>(random() % 2 ? random() : random() % 4);
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
