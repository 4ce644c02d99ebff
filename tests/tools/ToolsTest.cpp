// SPDX-License-Identifier: MIT
// The tools as a user runs them.
#include "tools/ToolsFixture.h"

namespace {

class Tools : public toolstest::ToolsTest {
  protected:
    CSampleInfo info;
    std::vector<ScanRecord> scans;

    // The letters of the highest channel at all peaks after scan `first`: far apart, they need no better base caller.
    std::string PlainCall(std::size_t first) const {
        const auto top = [&](std::size_t scan) {
            std::pair<std::int64_t, std::size_t> highest{150, 0};
            for (std::size_t c = 1; c <= 4; ++c)
                highest = std::max(highest, {std::int64_t{scans[scan].words[c]} - scans[first].words[c], c});
            return highest;
        };
        std::string letters;
        for (std::size_t s = first + 1; s + 1 < scans.size(); ++s)
            if (const auto [height, c] = top(s); c > 0 && height > top(s - 1).first && height >= top(s + 1).first)
                letters += info.channelBase[c - 1][0];
        return letters;
    }
};

TEST_F(Tools, SamplesHoldWhatTheTruthSays) {
    ASSERT_EQ(Run(SAMPLEGEN_PROGRAM " p -w 5 -b 40 --failed 2 --saturated 1 -o GATC -m 0 -n 0 -r 3"), 0);
    EXPECT_TRUE(temp.Read("p/dyeMethod1.ini").starts_with("GATC"));
    const std::string truth = temp.Read("p/truth.fasta");
    int failed = 0, saturated = 0;
    for (const std::string name : {"synthA01", "synthA02", "synthA03", "synthA04", "synthA05"}) {
        sampletest::ReadBack(Path("p/" + name + ".rsd"), info, scans);
        EXPECT_EQ(sampletest::XorOfFile(Path("p/" + name + ".rsd")), 0u);
        EXPECT_EQ("synth" + info.wellId, name);
        const std::string call = PlainCall(2500);
        const std::size_t at = truth.find(">" + name);
        saturated += info.saturated;
        failed += at == std::string::npos && call.empty();
        if (info.saturated || at == std::string::npos) continue;
        EXPECT_EQ(call.substr(call.size() - std::min<std::size_t>(call.size(), 40)), truth.substr(at + 19, 40));
    }
    EXPECT_EQ(failed + 10 * saturated, 12);
}

TEST_F(Tools, FormsOfFilesAndTheSameSeed) {
    for (const std::string folder : {"a", "b"})
        ASSERT_EQ(Run(SAMPLEGEN_PROGRAM " " + folder + " -w 97 -b 20 -p xyz --form esd --version 1.1 --no-tree -s 7"),
                  0);
    EXPECT_EQ(temp.Read("a/xyzE01.esd"), temp.Read("b/xyzE01.esd"));
    sampletest::ReadBack(Path("a/xyzE01.esd"), info, scans);
    EXPECT_EQ(temp.Read("a/xyzE01.esd").size(), scans.size() * scanRecordSize + 632);
    EXPECT_EQ(info.version + static_cast<float>(info.plateRows), 17.1f);
    for (const std::string bad : {"", "c -b 19", "c -o AACG", "c -n nan", "c -w 2 --failed 3", "c -s -1", "no/such"}) {
        EXPECT_EQ(Run(SAMPLEGEN_PROGRAM " " + bad), 1) << bad;
        EXPECT_FALSE(temp.Has("c")) << bad;
    }
}

// Measurements on plates are compared over years. What the rhythm and the dye shifts of hard plates are was measured on
// real runs; whoever changes them knows it from here.
TEST_F(Tools, PlatesStayWhatTheyWere) {
    const auto hash = [&](const std::string& options) {
        EXPECT_EQ(Run(SAMPLEGEN_PROGRAM " p " + options), 0) << temp.Read("printed");
        std::uint64_t value = 0xcbf29ce484222325u;  // FNV-1a
        for (const char* file : {"p/synthA01.rsd", "p/synthA02.rsd", "p/truth.fasta", "p/dyeMethod1.ini"})
            for (const std::uint8_t byte : sampletest::ReadBytes(Path(file)))
                value = (value ^ byte) * 0x100000001b3u;
        return value;
    };
    EXPECT_EQ(hash("-w 2 -b 700"), 0x5df76d8bde8918a6u);
    EXPECT_EQ(hash("-w 2 -b 700 -s 5 --hard"), 0xdff6665d4d62b7dfu);
    EXPECT_EQ(hash("-w 2 -b 200 --spikes 4 --blobs 2 --drop 10 --drop-at 90 --end-at 150"), 0xf33e913d5c280e3eu);
    EXPECT_EQ(hash("-w 2 -b 300 --mixed-from 201 --mixed-every 4 --cross-talk 0.5 --matrix-unknown"),
              0xf38506916990c606u);
}

TEST_F(Tools, CallsAreComparedWithTheTruth) {
    temp.Write("t/truth.fasta",
               ">p1A01 20 bases\nACGTTGCAAC\nCATGGATCCT\n>p1A02\nGATTACAGATTACA\n>p1A03\nACRTYGNKAC\n");
    // A junk head and tail, a substitution, an insertion and a deletion; then one whose ends were not called.
    temp.Write("t/FA/p1A01.seq", ">/out/my plate/p1A01.esd\t26\tQuillion\r\nNNNaCGTTGNAACC\r\nATTGGATCTNNN\r\n");
    // Then ambiguity codes in the truth: a letter of theirs and the code itself are right, another letter is not.
    temp.Write("t/more.fasta", ">p1A02.rsd\nTTACAGATTA\n>p1A03\nACATYGCAAC\n>p1B01\nA\n");
    EXPECT_EQ(Run(CALLS_AGREE_PROGRAM " t/truth.fasta t --at-least 90 --cover 88"), 0);
    for (const char* part : {"20       26       20       18       1       1       1     85.71 %\np1A02 ",
                             "10       10       10       0       0       0    100.00 %\np1A03 ",
                             "10       10        9       1       0       0     90.00 %\n", "a truth: p1B01\n"})
        EXPECT_NE(temp.Read("printed").find(part), std::string::npos) << temp.Read("printed");
    for (const std::string bad : {"t --at-least 91", "t --cover 91", "t/more.fasta", "t/none.seq", "t/FA t/none", ""})
        EXPECT_EQ(Run(CALLS_AGREE_PROGRAM " t/truth.fasta " + bad), 1) << bad;
}

}  // namespace
