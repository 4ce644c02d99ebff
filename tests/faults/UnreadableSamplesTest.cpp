// SPDX-License-Identifier: MIT
// Samples, raw or stored, that cannot be read, or that nobody could read once they are stored.
#include <map>

#include "run/ProgramFixture.h"

using programtest::CountOf;
using programtest::RunResult;

namespace {

const std::string everything = "-IP plate -OD out -BC -ABD -SCF -FA -FAP ";
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
    // Results by name, and a check that they are still the same.
    std::map<std::string, std::string> Results(const std::vector<std::string>& names) const {
        std::map<std::string, std::string> bytes;
        for (const std::string& name : names)
            bytes[name] = Result(name);
        return bytes;
    }
    void ExpectAsBefore(const std::map<std::string, std::string>& before) const {
        for (const auto& [name, bytes] : before)
            EXPECT_TRUE(Result(name) == bytes) << name;
    }
    std::size_t Warnings(const RunResult& run) const { return CountOf("lanewright: warning: ", run.errors); }
};

}  // namespace

TEST_F(UnreadableSamples, RawOneLeavesTheLettersOfTheStoredOne) {
    for (const auto& [first, forced] : {std::pair("", ""), {"-BO CATG", "-BO CATG"}, {"", "-BO CATG"}}) {
        SCOPED_TRACE(std::string(first) + forced);
        std::filesystem::remove_all(Path("out/plate_T10_QX1"));
        MakeOrdered("GTAC");
        ASSERT_EQ(Run(everything + first).exitCode + Run(everything + forced).exitCode, 0);
        const auto before = Results({"SCF/a.scf", "FASTA/a.seq", "a.esd"});  // these hold nothing of the raw curves
        std::filesystem::resize_file(Path("plate/a.rsd"), 1000);

        const RunResult run = Run(everything + forced);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(CountOf("already exists", run.output), 1u);
        ExpectAsBefore(before);
        EXPECT_EQ(Warnings(run), 1u) << run.errors;
    }
}

TEST_F(UnreadableSamples, StoredOneIsCalledAgain) {
    MakeOrdered("GTAC");
    ASSERT_EQ(Run(everything).exitCode, 0);
    const auto before = Results({"SCF/a.scf", "FASTA/a.seq", "ABD/a.abd", "a.esd"});
    const std::string stored = before.at("a.esd");
    // What it describes otherwise than the raw sample counts for nothing.
    std::string other = stored;
    for (const std::string text : {"dye2", "sample"})
        other.replace(other.find(text), 2, "??");
    // Without its trailer, without its first scan, and empty.
    for (const std::string& damaged : {stored.substr(0, 1000), stored.substr(20), other.substr(20), std::string()}) {
        SCOPED_TRACE(damaged.size());
        temp.Write("out/plate_T10_QX1/a.esd", damaged);
        const RunResult run = Run(everything);
        EXPECT_EQ(CountOf("successfully basecalled a.rsd", run.output), 1u);
        ExpectAsBefore(before);
        EXPECT_EQ(CountOf("a.esd cannot be read and is called again", run.errors), 1u) << run.errors;
    }
    // A link that leads nowhere gives its place to the sample.
    std::filesystem::remove(Path("out/plate_T10_QX1/a.esd"));
    std::filesystem::create_symlink(Path("out/nowhere.esd"), Path("out/plate_T10_QX1/a.esd"));
    const RunResult run = Run(everything);
    EXPECT_FALSE(std::filesystem::is_symlink(Path("out/plate_T10_QX1/a.esd")));
    ExpectAsBefore(before);
    EXPECT_EQ(run.errors,
              "lanewright: warning: the stored sample out/plate_T10_QX1/a.esd cannot be read and is called again\n");
    EXPECT_FALSE(temp.Has("out/nowhere.esd"));
    // Each run adds one record of 100 bases and none without.
    EXPECT_EQ(CountOf("\t100\tQuillion", Result("FASTA/plate_T10_QX1.seq")), 6u);
    EXPECT_EQ(CountOf(">", Result("FASTA/plate_T10_QX1.seq")), 6u);
}

TEST_F(UnreadableSamples, NothingIsStoredThatIsTooLargeToRead) {
    CSampleInfo info = sampletest::RawInfo(1000);
    info.comment.assign(997500, 'c');
    WriteWith(info);
    for (int i = 0; i < 2; ++i) {
        if (i > 0) temp.Write("out/plate_T10_QX1/a.esd", "a damaged one goes as well");
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
