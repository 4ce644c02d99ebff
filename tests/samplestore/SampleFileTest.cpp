#include "samplestore/SampleFile.h"

#include "SampleFixture.h"
#include "plugins/BaseCallerSet.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/ChannelOrder.h"

namespace {

using sampletest::Bytes;
using sampletest::NumberedScans;
using sampletest::RawInfo;
using sampletest::ReadBytes;
using sampletest::WriteBytes;
using sampletest::XorOfFile;

// A plate folder with a run around it.
class SampleFile : public sampletest::SampleTest {
  protected:
    void SetUp() override {
        driver = std::make_unique<CRunDriver>(1);
        driver->unattended = 1;
        driver->baseCallers = std::make_unique<CBaseCallerSet>(driver.get());
        driver->baseCallers->baseOrder = "GATC";
        plate = std::make_unique<CPlate>(temp.Path(), std::vector<CFileTypeFilter>{}, driver.get());
        plate->name = "thePlate";
        plate->outputFolder = temp.MakeFolder("out");
    }

    std::string Log() const {
        const Bytes bytes = ReadBytes(Path("basecall.log"));
        return std::string(bytes.begin(), bytes.end());
    }
    // The log behind the loading line.
    std::string LogAfterLoading() const {
        const std::string log = Log();
        return log.substr(log.find("\r\n") + 2);
    }

    std::unique_ptr<CSampleFile> Loaded(const std::string& name, std::int32_t expected = 1) {
        std::filesystem::remove(Path("basecall.log"));
        auto sample = std::make_unique<CSampleFile>(Path(name), plate.get());
        EXPECT_EQ(sample->Load(Path(name), 0), expected) << name;
        return sample;
    }

    void Write(const std::string& name, const CSampleInfo& info, std::uint32_t scans = 12) {
        ASSERT_EQ(WriteSample(Path(name), info, NumberedScans(scans)), 0);
    }

    std::unique_ptr<CRunDriver> driver;
    std::unique_ptr<CPlate> plate;
};

TEST_F(SampleFile, KindsOfFiles) {
    Write("raw.RSD", RawInfo(12));
    WriteBytes(Path("bad.rsd"), Bytes(700));
    WriteBytes(Path("a.abd"), {'A', 'B', 'I', 'F', 0, 'e', 't', 'd', 'i', 'r', 0});
    WriteBytes(Path("short.abd"), {'A', 'B', 'I', 'F', 0, 'e', 't', 'd', 'i', 'r'});
    WriteBytes(Path("s.scf"), {'.', 's', 'c', 'f', 0, 0, 0, 0, 0, 0, 0});
    WriteBytes(Path("s.rsd"), ReadBytes(Path("s.scf")));
    const CSampleFile sample("x", plate.get());
    const auto kind = [&](const char* name) { return sample.CheckSampleKind(Path(name)); };
    EXPECT_EQ(kind("raw.RSD"), SampleKind::Raw);
    EXPECT_EQ(kind("bad.rsd"), SampleKind::Unreadable);
    EXPECT_EQ(kind("a.abd"), SampleKind::Abif);
    EXPECT_EQ(kind("short.abd"), SampleKind::Processed);
    EXPECT_EQ(kind("s.scf"), SampleKind::Scf);
    EXPECT_EQ(kind("s.rsd"), SampleKind::Unreadable);
    EXPECT_EQ(kind("missing"), SampleKind::Processed);
}

TEST_F(SampleFile, LoadsARawSample) {
    Write("plateB07.rsd", RawInfo(12));
    const auto sample = Loaded("plateB07.rsd");
    EXPECT_EQ(sample->fileName, "plateB07.rsd");
    ASSERT_EQ(sample->rawTrace->trace->scanCount, 12u);
    EXPECT_EQ(sample->rawTrace->trace->channels[1][11], 2011.0);
    EXPECT_EQ(sample->baseOrder, std::string("TGCAN\0", 6));
    EXPECT_EQ(sample->info.chemistryName, "LD Terminators");
    EXPECT_EQ(channelOrderAcgt, (std::array<std::int32_t, 4>{3, 2, 1, 0}));
    EXPECT_EQ(channelOrderCagt, (std::array<std::int32_t, 4>{2, 3, 1, 0}));
    EXPECT_TRUE(Log().starts_with("\tLoading plateB07.rsd  thePlate  "));
    EXPECT_EQ(LogAfterLoading(), "Using base order TGCA. \r\n");
}

TEST_F(SampleFile, RefusedFiles) {
    CSampleInfo info = RawInfo(12);
    info.processed = true;
    Write("processed.esd", info);
    Loaded("processed.esd", 0);
    EXPECT_EQ(LogAfterLoading(), "");

    Write("count.rsd", RawInfo(13));
    const auto sample = Loaded("count.rsd", 0);
    EXPECT_EQ(LogAfterLoading(), "skipped . Wrong file format.The file may be corrupted\r\nSuccess\r\n");
    EXPECT_EQ(sample->rawTrace->trace->scanCount, 0u);

    WriteBytes(Path("noise"), Bytes(700));
    Loaded("noise", 0);
    EXPECT_TRUE(LogAfterLoading().starts_with(
        "skipped . Wrong file format.The file may contain analyzed data\r\nNumerical result out of range\r\n"));
    Loaded("missing", 0);
    EXPECT_EQ(LogAfterLoading(), "cannot open input file " + Path("missing") + "\r\nNo such file or directory\r\n");
}

// A sample file with a bad trailer loads as a sample without scans; its base call fails later.
TEST_F(SampleFile, UnreadableSamplesLoadEmpty) {
    WriteBytes(Path("plateA01.rsd"), Bytes(700));
    const auto sample = Loaded("plateA01.rsd");
    EXPECT_EQ(sample->rawTrace->trace->scanCount, 0u);
    EXPECT_EQ(sample->baseOrder, std::string("GATCN\0", 6));
    EXPECT_EQ(LogAfterLoading(), "The base order is not specified in the plateA01.rsd.\r\nUsing base order GATC. \r\n");
    EXPECT_EQ(sample->info.wellId + " " + sample->info.sampleName, "A01 plate");
}

TEST_F(SampleFile, OldFilesTakeTheirOrderFromTheLetters) {
    CSampleInfo info = RawInfo(2);
    info.version = 1.1f;
    info.plateId = info.sampleName = info.wellId = "";
    for (auto& letters : info.channelBase)
        letters[0] = static_cast<char>(letters[0] + 32);
    ASSERT_EQ(WriteBareSample(Path("xyzA01.rsd"), info, NumberedScans(2)), 0);
    auto sample = Loaded("xyzA01.rsd");
    EXPECT_EQ(sample->baseOrder.substr(0, 5), "TGCAN");
    EXPECT_EQ(sample->info.plateId + " " + sample->info.wellId + " " + sample->info.sampleName, "thePlate A01 xyz");

    driver->baseCallers->baseOrderForced = 1;
    sample = Loaded("xyzA01.rsd");
    EXPECT_EQ(sample->baseOrder.substr(0, 5), "GATCN");
    EXPECT_NE(Log().find("not specified in the xyzA01.rsd"), std::string::npos);
    EXPECT_EQ(sample->info.chemistryName, "");
}

TEST_F(SampleFile, NewFilesTakeTheirOrderFromTheNames) {
    CSampleInfo info = RawInfo(2);
    const char* names[] = {"agct", "g", "C", "t"};
    for (std::size_t i = 0; i < channelCount; ++i)
        info.channel[i].base = names[i];
    Write("a.rsd", info, 2);
    auto sample = Loaded("a.rsd");
    EXPECT_EQ(sample->baseOrder.substr(0, 5), "agCtN");
    EXPECT_EQ(sample->info.chemistryName, "RFK-Version 2 Terminators");

    driver->baseCallers->baseOrderForced = 1;
    driver->baseCallers->baseOrder = "AC";
    sample = Loaded("a.rsd");
    EXPECT_EQ(sample->baseOrder, std::string("AC\0\0N\0", 6));
    EXPECT_EQ(sample->info.channel[0].base + sample->info.channel[3].base, "A");
    EXPECT_EQ(LogAfterLoading(), "Using base order AC. \r\n");
}

class SampleSaving : public SampleFile {
  protected:
    // A loaded sample of 300 scans with a processed range of 200 in a holder.
    CTraceFile& Processed(const std::string& target) {
        Write("a.rsd", RawInfo(300), 300);
        sample = Loaded("a.rsd");
        CTraceFile& holder = *sample->CreateProcessedTrace(target, 1, &caller);
        std::array<std::vector<double>, channelCount> channels;
        channels.fill(std::vector<double>(200, 2.5));
        holder.Processed()->SetArrays(channels, std::vector<double>(200, 7));
        holder.Processed()->traceStart = 50;
        holder.Processed()->traceEnd = 250;
        holder.Processed()->separationMatrix = Matrix4{};
        (*holder.Processed()->separationMatrix)[1][2] = 0.5f;
        return holder;
    }

    CBaseCaller caller;
    std::unique_ptr<CSampleFile> sample;
};

TEST_F(SampleSaving, ProcessedSample) {
    const std::string target = Path("out/a.esd");
    caller.name = "the caller";
    CTraceFile& holder = Processed(target);
    WriteBytes(target, Bytes(9999, 1));  // an older one is replaced
    const Bytes raw = ReadBytes(Path("a.rsd"));
    std::filesystem::permissions(Path("a.rsd"), std::filesystem::perms::owner_read);
    ASSERT_EQ(sample->SaveProcessedSample(holder, 5), 1);
    EXPECT_EQ(ReadBytes(Path("a.rsd")), raw);
    EXPECT_EQ(XorOfFile(target), 0u);

    CSampleFile again(target, plate.get());
    CTraceFile& back = *again.CreateProcessedTrace(target, 1, nullptr);
    ASSERT_EQ(again.LoadProcessed(back, 1), 1);
    EXPECT_TRUE(again.info.processed);
    EXPECT_EQ(again.info.scanCount, 200u);
    EXPECT_EQ(back.Processed()->CallerInfo()->name, "the caller");
    EXPECT_EQ(back.trace->channels[2][199], 2.5);
    EXPECT_EQ(back.trace->traceEnd, 250.0);
    EXPECT_EQ((*back.Processed()->separationMatrix)[1][2], 0.5f);
    const Bytes log = ReadBytes(Path("log.xml"));
    EXPECT_NE(std::string(log.begin(), log.end()).find("<esd>\r\n" + target), std::string::npos);
}

TEST_F(SampleSaving, FailedSample) {
    CTraceFile& holder = Processed(Path("out/a.esd"));
    sample->info.analysis.basecallError = "nothing there";
    ASSERT_EQ(sample->SaveFailedSample(holder), 1);
    EXPECT_EQ(holder.path, Path("out/a.fsd"));
    EXPECT_EQ(XorOfFile(holder.path), 0u);
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(holder.path, info, scans);
    EXPECT_TRUE(info.processed);
    EXPECT_EQ(info.analysis.basecallError, "nothing there");
    ASSERT_EQ(scans.size(), 1u);
    EXPECT_EQ(scans[0].Word(0), 1u);
    EXPECT_EQ(scans[0].Float(4), 1.0f);
}

TEST_F(SampleSaving, TheRawFileIsNeverTheTarget) {
    CTraceFile& holder = Processed(Path("out/../a.rsd"));
    const Bytes raw = ReadBytes(Path("a.rsd"));
    EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0);
    EXPECT_EQ(ReadBytes(Path("a.rsd")), raw);

    holder.path = Path("none/a.esd");
    EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0);
    std::filesystem::remove(Path("a.rsd"));
    holder.path = Path("out/a.esd");
    EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0);
    EXPECT_FALSE(std::filesystem::exists(Path("out/a.esd")));
    EXPECT_EQ(LogAfterLoading(), "Using base order TGCA. \r\n");
}

// A raw file that cannot be updated: the failure is told and the half-made target left to the caller.
TEST_F(SampleSaving, DamagedCopy) {
    CTraceFile& holder = Processed(Path("out/a.esd"));
    WriteBytes(Path("a.rsd"), Bytes(700));
    EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0);
    EXPECT_NE(Log().find("failed to write file " + Path("out/a.esd") + " \r\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(Path("log.xml")));
}

}  // namespace
