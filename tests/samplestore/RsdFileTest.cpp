// SPDX-License-Identifier: MIT
#include "samplestore/RsdFile.h"

#include <bit>

#include "SampleFixture.h"

namespace {

using namespace sampletest;

constexpr std::size_t trailerSize = 632;

class RsdFile : public SampleTest {
  protected:
    std::string MakeSample(std::uint32_t scans = 10) {
        const std::string path = Path("a.rsd");
        EXPECT_EQ(WriteSample(path, RawInfo(scans), NumberedScans(scans)), 0);
        return path;
    }

    static void Update(const std::string& path, const CSampleInfo* info, const std::vector<ScanRecord>* scans,
                       std::int32_t expected = 0) {
        CRsdFile file;
        ASSERT_EQ(file.Open(path, false), 0);
        EXPECT_EQ(file.Open(path, false), -1);
        ASSERT_EQ(info ? file.WriteInfo(*info) : platform::success, 0);
        ASSERT_EQ(scans ? file.WriteScans(*scans) : platform::success, 0);
        EXPECT_EQ(file.Close(), expected);
    }
};

TEST_F(RsdFile, LayoutAndChecksum) {
    CSampleInfo info = RawInfo(7);
    const auto put = [](auto& field, std::string_view text) { std::copy(text.begin(), text.end(), field.begin()); };
    put(info.operatorName, "operator");
    put(info.instrumentId, "instrument");
    put(info.reservedText, "reserved");
    put(info.runId, "run");
    info.beamSplitterA.assign(40, 'A');
    info.beamSplitterB = "splitter B";
    float value = 0;
    for (float* field : {&info.runVoltage, &info.runTime, &info.injectionTime, &info.injectionVoltage,
                         &info.temperature, &info.pmtVoltage1, &info.pmtVoltage2, &info.separationMatrix[3][2]})
        *field = value += 1.5f;
    std::int32_t number = 0;
    for (std::int32_t* field :
         {&info.laserIndex, &info.runParameters[6], &info.runStart, &info.runStop, &info.scanRate})
        *field = --number;
    info.plateColumns = 24;
    info.plateRows = 16;
    info.capillaries = 8;
    info.trailerByte626 = 9;
    info.saturated = true;
    ASSERT_EQ(WriteSample(Path("a.rsd"), info, NumberedScans(7)), 0);
    Bytes bytes = ReadBytes(Path("a.rsd"));
    ASSERT_GT(bytes.size(), 140 + trailerSize);
    const std::size_t trailer = bytes.size() - trailerSize;
    const std::pair<std::size_t, std::string> texts[] = {
        {0, "sample"},       {24, "operator"}, {86, std::string(29, 'A')},
        {116, "splitter B"}, {146, "filter0"}, {236, "filter3"},
        {358, "T"},          {388, "A"},       {398, "instrument"},
        {420, "reserved"},   {568, "run"},     {574, "plate"}};
    for (const auto& [at, text] : texts)
        EXPECT_EQ(std::string(&bytes[trailer + at], &bytes[trailer + at + text.size() + 1]), text + '\0') << at;
    value = 0;
    for (const std::size_t at : {54, 58, 62, 66, 70, 78, 82, 294 + 14 * 4})
        EXPECT_EQ(std::bit_cast<float>(WordAt(bytes, trailer + at)), value += 1.5f) << at;
    const std::pair<std::size_t, std::size_t> words[] = {{74, -1u},
                                                         {290, -2u},
                                                         {608, -3u},
                                                         {612, -4u},
                                                         {620, -5u},
                                                         {596, 1},
                                                         {600, 1},
                                                         {616, 7},
                                                         {624, 0x90800u},
                                                         {454, bytes.size() - 140},
                                                         {458, trailer - 140}};
    for (const auto& [at, word] : words)
        EXPECT_EQ(WordAt(bytes, trailer + at), word) << at;
    EXPECT_EQ(std::string(&bytes[trailer + 450], &bytes[trailer + 454]), "ESD1");
    EXPECT_EQ(WordAt(bytes, 6 * 20 + 4), 1006u);
    EXPECT_EQ(XorOfFile(Path("a.rsd")), 0u);
    // All of it is read too: what is stored from it has the same bytes.
    std::vector<ScanRecord> scans;
    SetWord(bytes, trailer + 600, 2);  // any number but 0 means saturated
    WriteBytes(Path("b.rsd"), bytes);
    ReadBack(Path("b.rsd"), info, scans);
    ASSERT_EQ(WriteSample(Path("b.rsd"), info, scans), 0);
    EXPECT_TRUE(ReadBytes(Path("b.rsd")) == ReadBytes(Path("a.rsd")));
}

TEST_F(RsdFile, WithoutTreeOnlyTheTrailerIsRead) {
    const std::string path = Path("bare.esd");
    CSampleInfo info = RawInfo(3);
    std::vector<ScanRecord> scans;
    info.plateColumns = 24;
    ASSERT_EQ(WriteBareSample(path, info, NumberedScans(3)), 0);
    EXPECT_EQ(ReadBytes(path).size(), 60 + trailerSize);
    EXPECT_EQ(XorOfFile(path), 0u);
    ReadBack(path, info, scans);
    EXPECT_EQ(info.sampleName + info.plateId + info.channel[0].filter, "");
    EXPECT_EQ(info.plateColumns, 24);
    EXPECT_EQ(info.plateRows, 8);  // stored as 0
    EXPECT_EQ(info.channelBase[0][0], 'T');

    info.comment = "now with a tree";
    Update(path, &info, nullptr);
    ReadBack(path, info, scans);
    EXPECT_EQ(info.comment, "now with a tree");
    ASSERT_EQ(scans.size(), 3u);
    EXPECT_EQ(scans[2].words, NumberedScans(3)[2].words);
}

TEST_F(RsdFile, NewScansMoveTreeAndTrailer) {
    const std::string path = MakeSample(50);
    const std::size_t tailSize = ReadBytes(path).size() - 50 * scanRecordSize;
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    for (const std::uint32_t count : {9u, 300u, 0u}) {
        const auto replacement = NumberedScans(count);
        Update(path, nullptr, &replacement);
        EXPECT_EQ(XorOfFile(path), 0u);
        EXPECT_EQ(ReadBytes(path).size(), count * scanRecordSize + tailSize);
        ReadBack(path, info, scans);
        EXPECT_EQ(info.channel[3].filter, "filter3");
        ASSERT_EQ(scans.size(), count);
        if (count > 0) {
            EXPECT_EQ(scans.back().words, replacement.back().words);
        }
    }
}

TEST_F(RsdFile, UnknownBytesAndKeysSurvive) {
    const std::string path = MakeSample();
    Bytes bytes = ReadBytes(path);
    const std::size_t kept[] = {462, 495, 496, 504, 567, 592, 624, 627};
    for (const std::size_t at : kept)
        bytes[bytes.size() - trailerSize + at] = 0x5A;
    // A key of another program, instead of one of ours.
    const std::string ours = "MACHINE ID", theirs = "Machine no";
    auto found = std::search(bytes.begin(), bytes.end(), ours.begin(), ours.end());
    ASSERT_NE(found, bytes.end());
    std::copy(theirs.begin(), theirs.end(), found);
    WriteBytes(path, bytes);

    CSampleInfo info;
    std::vector<ScanRecord> scans;
    ReadBack(path, info, scans);
    Update(path, &info, &scans);
    const Bytes after = ReadBytes(path);
    for (const std::size_t at : kept)
        EXPECT_EQ(after[after.size() - trailerSize + at], 0x5A) << at;
    for (const std::string& key : {ours, theirs})
        EXPECT_NE(std::search(after.begin(), after.end(), key.begin(), key.end()), after.end());
}

TEST_F(RsdFile, DamagedSizesAndVersions) {
    constexpr std::size_t totalSizeAt = 454, treeSizeAt = 458, versionAt = 604;
    const std::tuple<std::size_t, std::uint32_t, std::int32_t> cases[] = {
        {versionAt, std::bit_cast<std::uint32_t>(1.0f), 34},
        {versionAt, std::bit_cast<std::uint32_t>(1.1f), 0},
        {versionAt, std::bit_cast<std::uint32_t>(1000.0f), 0},
        {versionAt, std::bit_cast<std::uint32_t>(1001.0f), 34},
        {versionAt, 0x7FC00000, 34},  // not a number
        {treeSizeAt, 1000001, 1},
        {treeSizeAt, 0xFFFFFFFF, 1},
        {treeSizeAt, 999999, 34},
        {totalSizeAt, 0, 34},
    };
    const Bytes good = ReadBytes(MakeSample());
    const std::string path = Path("damaged.rsd");
    for (const auto& [at, word, expected] : cases) {
        Bytes bytes = good;
        SetWord(bytes, bytes.size() - trailerSize + at, word);
        WriteBytes(path, bytes);
        CRsdFile file;
        CSampleInfo info;
        EXPECT_EQ(file.Open(path, true), 0);
        EXPECT_EQ(file.ReadInfo(info), expected) << at << " " << word;
    }

    // A total size beyond the file: nothing before it can be counted, nor stored.
    Bytes bytes = good;
    SetWord(bytes, bytes.size() - trailerSize + totalSizeAt, 1000000);
    WriteBytes(path, bytes);
    const auto scans = NumberedScans(1);
    Update(path, nullptr, &scans, 34);
    EXPECT_EQ(ReadBytes(path), bytes);
    WriteBytes(path, Bytes(631));
    Update(path, nullptr, &scans, EINVAL);
}

// An update of the description leaves the scans alone: a remainder stays, and so does an error in the checksum. A tree
// that has lost its end is stored anew.
TEST_F(RsdFile, UpdateOfTheDescriptionLeavesTheScans) {
    const std::string path = MakeSample(10);
    Bytes bytes = ReadBytes(path);
    bytes[5] ^= 0x40;
    bytes.insert(bytes.begin() + 200, {1, 2, 3, 4, 1, 2, 3, 4});
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    for (const bool damageTree : {false, true}) {
        if (damageTree) bytes[208] = 0x67;  // the first item now reaches beyond the tree
        WriteBytes(path, bytes);
        const std::uint32_t wrong = XorOfFile(path);
        ReadBack(path, info, scans);
        EXPECT_EQ(scans.size(), 10u);
        EXPECT_EQ(info.plateId, damageTree ? "" : "plate");
        info.comment = "changed";
        Update(path, &info, nullptr);
        const Bytes after = ReadBytes(path);
        EXPECT_TRUE(std::equal(bytes.begin(), bytes.begin() + 208, after.begin()));
        EXPECT_EQ(XorOfFile(path), wrong);
        ReadBack(path, info, scans);
        EXPECT_EQ(info.comment, "changed");
    }
}

// A description that the tree does not take leaves the file as it was, and the next one goes in as if it were the
// first.
TEST_F(RsdFile, CommitAfterAFailedOne) {
    const std::string path = MakeSample();
    const Bytes before = ReadBytes(path);
    CRsdFile file;
    CSampleInfo info, working;
    ASSERT_EQ(file.Open(path, false), 0);
    ASSERT_EQ(file.ReadInfo(info), 0);
    info.sampleName = "renamed";
    info.comment.assign(17000000, 'c');
    EXPECT_EQ(file.WriteInfo(info), 0);
    EXPECT_EQ(file.Commit(), -1);
    EXPECT_EQ(ReadBytes(path), before);
    for (const std::size_t length : {3001u, 2u}) {
        info.comment.resize(length);
        EXPECT_EQ(file.WriteInfo(info), 0);
        EXPECT_EQ(file.ReadInfo(working), 0);
        EXPECT_EQ(working.comment.size(), length);
        EXPECT_EQ(file.Commit(), 0);
        EXPECT_EQ(XorOfFile(path), 0u);
    }
    EXPECT_EQ(file.ReadInfo(working), 0);
    EXPECT_EQ(working.sampleName + working.comment, "renamedcc");
}

}  // namespace
