// Samples, raw or stored, that cannot be read, or that nobody could read once they are stored.
#include "run/ProgramFixture.h"

using programtest::CountOf;
using programtest::RunResult;

namespace {

const std::string everything = "-IP plate -OD out -BC -ABD -SCF -FA -FAP ";
const char* const shown[] = {"SCF/a.scf", "FASTA/a.seq"};  // these hold nothing of the raw curves

class UnreadableSamples : public programtest::ProgramTest {
  protected:
    // A sample whose channels show the bases of `order`; the default order is another one.
    void MakeOrdered(const std::string& order) const {
        CSampleInfo info = sampletest::RawInfo(1000);
        for (std::size_t i = 0; i < channelCount; ++i) {
            info.channelBase[i].front() = order[i];
            info.channel[i].base = order.substr(i, 1);
        }
        WriteWith(info);
    }
    void WriteWith(const CSampleInfo& info) const {
        std::vector<ScanRecord> scans = sampletest::NumberedScans(info.scanCount);
        for (std::size_t i = 0; i < scans.size(); ++i)
            scans[i].words[4] = static_cast<std::uint32_t>(7 + i % 100);
        ASSERT_EQ(WriteSample(Path("plate/a.rsd"), info, scans), 0);
    }
    std::string Result(const std::string& name) const { return temp.Read("out/plate_T10_QX1/" + name); }
    std::size_t Warnings(const RunResult& run) const { return CountOf("lanewright: warning: ", run.errors); }
};

}  // namespace

TEST_F(UnreadableSamples, RawOneLeavesTheLettersOfTheStoredOne) {
    for (const std::string forced : {"", "-BO CATG "}) {
        SCOPED_TRACE(forced);
        std::filesystem::remove_all(Path("out/plate_T10_QX1"));
        MakeOrdered("GTAC");
        ASSERT_EQ(Run(everything + forced).exitCode, 0);
        std::vector<std::string> before;
        for (const char* name : shown)
            before.push_back(Result(name));
        const std::string stored = Result("a.esd");
        std::filesystem::resize_file(Path("plate/a.rsd"), 1000);

        const RunResult run = Run(everything + forced);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(CountOf("already exists", run.output), 1u);
        for (std::size_t i = 0; i < before.size(); ++i)
            EXPECT_TRUE(Result(shown[i]) == before[i]) << shown[i];
        EXPECT_TRUE(Result("a.esd") == stored);
        EXPECT_EQ(Warnings(run), 1u) << run.errors;
    }
}

TEST_F(UnreadableSamples, StoredOneIsCalledAgain) {
    MakeOrdered("GTAC");
    ASSERT_EQ(Run(everything).exitCode, 0);
    std::vector<std::string> before;
    const std::vector<std::string> names = {"SCF/a.scf", "FASTA/a.seq", "ABD/a.abd", "a.esd"};
    for (const std::string& name : names)
        before.push_back(Result(name));
    // Without its trailer, without its first scan, and none at all.
    for (const int damage : {0, 1, 2}) {
        SCOPED_TRACE(damage);
        const std::string stored = before.back();
        temp.Write("out/plate_T10_QX1/a.esd", damage == 0   ? stored.substr(0, 1000)
                                              : damage == 1 ? stored.substr(20)
                                                            : std::string());
        const RunResult run = Run(everything);
        EXPECT_EQ(CountOf("successfully basecalled a.rsd", run.output), 1u);
        for (std::size_t i = 0; i < names.size(); ++i)
            EXPECT_TRUE(Result(names[i]) == before[i]) << names[i];
        EXPECT_EQ(CountOf("a.esd cannot be read and is called again", run.errors), 1u) << run.errors;
    }
    // Each run adds one record of 100 bases and none without.
    EXPECT_EQ(CountOf("\t100\tQuillion", Result("FASTA/plate_T10_QX1.seq")), 4u);
    EXPECT_EQ(CountOf(">", Result("FASTA/plate_T10_QX1.seq")), 4u);
}

TEST_F(UnreadableSamples, NothingIsStoredThatIsTooLargeToRead) {
    CSampleInfo info = sampletest::RawInfo(1000);
    info.comment.assign(997500, 'c');
    WriteWith(info);
    for (int i = 0; i < 2; ++i) {
        const RunResult run = Run(everything);
        EXPECT_EQ(CountOf("failed to write file out/plate_T10_QX1/a.esd \r\n", run.output), 1u) << run.output;
        EXPECT_FALSE(temp.Has("out/plate_T10_QX1/a.esd"));
        EXPECT_FALSE(temp.Has("out/plate_T10_QX1/FASTA/a.seq"));
    }
}

TEST_F(UnreadableSamples, ErrorOfAnEarlierCallIsGoneAfterASuccess) {
    CSampleInfo info = sampletest::RawInfo(1000);
    info.analysis.basecallError = "of long ago";
    WriteWith(info);
    ASSERT_EQ(Run(everything).exitCode, 0);
    const std::string scf = Result("SCF/a.scf");
    const RunResult run = Run(everything);
    EXPECT_EQ(CountOf("already exists", run.output), 1u);
    EXPECT_EQ(CountOf("exported to FASTA", run.output), 2u);
    EXPECT_TRUE(Result("SCF/a.scf") == scf);
    EXPECT_EQ(CountOf("of long ago", Result("a.esd")), 0u);
}
