// SPDX-License-Identifier: MIT
#include "samplestore/SampleFile.h"

#include "SampleFixture.h"
#include "plugins/BaseCallerSet.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/ChannelOrder.h"

namespace {

using namespace sampletest;

// A plate folder with a run around it.
class SampleFile : public SampleTest {
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
    // The log after the loading line.
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

    CBaseCaller caller;
    std::unique_ptr<CRunDriver> driver;
    std::unique_ptr<CPlate> plate;
};

TEST_F(SampleFile, KindsOfFiles) {
    const Bytes abif = {'A', 'B', 'I', 'F', 0, 'e', 't', 'd', 'i', 'r', 0},
                scf = {'.', 's', 'c', 'f', 0, 0, 0, 0, 0, 0, 0};
    const std::tuple<const char*, Bytes, SampleKind> cases[] = {
        {"bad.rsd", Bytes(700), SampleKind::Unreadable},
        {"a.abd", abif, SampleKind::Abif},
        {"short.abd", Bytes(abif.begin(), abif.end() - 1), SampleKind::Processed},
        {"s.scf", scf, SampleKind::Scf},
        {"s.esD", scf, SampleKind::Unreadable},
    };
    const CSampleFile sample("x", plate.get());
    for (const auto& [name, bytes, kind] : cases) {
        WriteBytes(Path(name), bytes);
        EXPECT_EQ(sample.CheckSampleKind(Path(name)), kind) << name;
    }
    Write("raw.RSD", RawInfo(12));
    EXPECT_EQ(sample.CheckSampleKind(Path("raw.RSD")), SampleKind::Raw);
    EXPECT_EQ(sample.CheckSampleKind(Path("missing")), SampleKind::Processed);
    Loaded("a.abd", 0);
    EXPECT_EQ(LogAfterLoading(), "");
}

TEST_F(SampleFile, LoadsARawSample) {
    CSampleInfo info = RawInfo(12);
    info.chemistryName = "own";
    Write("plateB08.rsd", info);
    const auto sample = Loaded("plateB08.rsd");
    EXPECT_EQ(sample->fileName, "plateB08.rsd");
    EXPECT_EQ(sample->info.chemistryName + sample->info.plateId + sample->info.wellId, "ownplateB07");
    ASSERT_EQ(sample->rawTrace->trace->scanCount, 12u);
    sample->rawTrace->trace->FillArrays();
    EXPECT_EQ(sample->rawTrace->trace->channels[1][11], 2011.0);
    EXPECT_EQ(channelOrderAcgt, (std::array<std::int32_t, 4>{3, 2, 1, 0}));
    EXPECT_EQ(channelOrderCagt, (std::array<std::int32_t, 4>{2, 3, 1, 0}));
    EXPECT_TRUE(Log().starts_with("\tLoading plateB08.rsd  thePlate  "));
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

// Such a file loads as a sample without scans; its base call fails later.
TEST_F(SampleFile, UnreadableSamplesLoadEmpty) {
    WriteBytes(Path("plateA01.rsd"), Bytes(700));
    const auto sample = Loaded("plateA01.rsd");
    EXPECT_EQ(sample->rawTrace->trace->scanCount, 0u);
    EXPECT_EQ(sample->baseOrder, std::string("GATCN\0", 6));
    EXPECT_EQ(LogAfterLoading(), "The base order is not specified in the plateA01.rsd.\r\nUsing base order GATC. \r\n");
}

// What is in a file (no names: no tree), what the run asks for, and what comes out.
struct OrderCase {
    float version;
    const char* names;
    const char* letters;
    std::int32_t forced;
    std::string order, chemistry;
    bool message;
};

TEST_F(SampleFile, BaseOrders) {
    const OrderCase cases[] = {
        {1.2f, "agct", "TGCA", 0, "agct", "RFK-Version 2 Terminators", false},
        {1.2f, nullptr, "tgca", 0, "TGCA", "LD Terminators", false},
        {1.2f, nullptr, "TG\0A", 0, "tC", "", true},
        {1.2f, "agct", "TGCA", 1, "tC", "", false},
        {1.1f, "agct", "actg", 0, "ACTG", "LD Primers", false},
        {1.1f, "agct", "actg", 1, "tC", "", true},
    };
    driver->baseCallers->baseOrder = "tC";
    for (const OrderCase& c : cases) {
        channelOrderAcgt = {7, 7, 7, 7};
        CSampleInfo info = RawInfo(2);
        info.version = c.version;
        info.sampleName = c.forced ? "abc" : "";
        for (std::size_t i = 0; i < channelCount; ++i) {
            info.channelBase[i][0] = c.letters[i];
            if (c.names) info.channel[i].base = std::string(1, c.names[i]) + "x";
        }
        ASSERT_EQ((c.names ? WriteSample : WriteBareSample)(Path("xyzA01.rsd"), info, NumberedScans(2)), 0);
        driver->baseCallers->baseOrderForced = c.forced;
        const auto sample = Loaded("xyzA01.rsd");
        std::string order = c.order;
        order.resize(4);
        EXPECT_EQ(sample->baseOrder, order + std::string("N\0", 2));
        EXPECT_EQ(sample->info.chemistryName, c.chemistry);
        const std::string message = c.message ? "The base order is not specified in the xyzA01.rsd.\r\n" : "";
        EXPECT_EQ(LogAfterLoading(), message + "Using base order " + c.order + ". \r\n");
        if (c.order == "tC") {
            EXPECT_EQ(sample->info.channel[0].base + sample->info.channel[3].base, "t");
            EXPECT_EQ(sample->info.channelBase[1][0], 'C');
            // Letters that the order lacks keep their channels of before.
            EXPECT_EQ(channelOrderAcgt, (std::array<std::int32_t, 4>{7, 1, 7, 7}));
        }
        if (c.version < 1.2) {
            EXPECT_EQ(sample->info.plateId + sample->info.wellId + sample->info.sampleName,
                      c.forced ? "thePlateA01abc" : "thePlateA01xyz");
        }
    }
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
    EXPECT_NE(std::filesystem::status(target).permissions() & std::filesystem::perms::owner_write,
              std::filesystem::perms::none);

    CSampleFile again(target, plate.get());
    CTraceFile& back = *again.CreateProcessedTrace(target, 1, nullptr);
    ASSERT_EQ(again.LoadProcessed(back, 1), 1);
    EXPECT_TRUE(again.info.processed);
    EXPECT_EQ(again.info.scanCount, 200u);
    EXPECT_EQ(back.Processed()->CallerInfo()->name, "the caller");
    std::vector<ScanRecord> records;
    CAnalysisInfo analysis;
    back.trace->ToScans(records, analysis);  // before the arrays are filled
    ASSERT_EQ(records.size(), 200u);
    EXPECT_EQ(records[199].Float(3), 2.5f);
    back.trace->FillArrays();
    EXPECT_EQ(back.trace->channels[2][199], 2.5);
    EXPECT_EQ(back.trace->traceEnd, 250.0);
    EXPECT_EQ((*back.Processed()->separationMatrix)[1][2], 0.5f);

    // A raw trace has nothing to store: a plain copy, and no entry.
    const Bytes log = ReadBytes(Path("log.xml"));
    CTraceFile plain(Path("out/b.esd"), sample.get(), false, nullptr);
    EXPECT_EQ(sample->SaveProcessedSample(plain, 5), 1);
    EXPECT_EQ(ReadBytes(plain.path), raw);
    EXPECT_EQ(ReadBytes(Path("log.xml")), log);
    EXPECT_NE(std::string(log.begin(), log.end()).find("<esd>\r\n" + target), std::string::npos);
}

TEST_F(SampleSaving, FailedSample) {
    CTraceFile& holder = Processed(Path("out/a.esd"));
    caller.name = "the caller";
    driver->baseCallers->currentCaller = &caller;
    sample->info.analysis.basecallError = "nothing there";
    ASSERT_EQ(sample->SaveFailedSample(holder), 1);
    EXPECT_EQ(holder.path, Path("out/a.fsd"));
    EXPECT_EQ(XorOfFile(holder.path), 0u);
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    ReadBack(holder.path, info, scans);
    EXPECT_TRUE(info.processed);
    EXPECT_EQ(info.analysis.baseCaller + ": " + info.analysis.basecallError, "the caller: nothing there");
    ASSERT_EQ(scans.size(), 1u);
    EXPECT_EQ(scans[0].Word(0), 1u);
    EXPECT_EQ(scans[0].Float(4), 1.0f);
}

// A copy onto the raw file itself, targets that cannot be written, and raw files that cannot be copied or updated.
TEST_F(SampleSaving, FailuresLeaveNothing) {
    CTraceFile& holder = Processed(Path("out/../a.rsd"));
    const Bytes raw = ReadBytes(Path("a.rsd"));
    testing::internal::CaptureStdout();
    for (const std::string& target : {holder.path, Path("none/a.esd"), temp.MakeFolder("folder")}) {
        holder.path = target;
        EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0) << target;
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Access is denied");
    EXPECT_EQ(ReadBytes(Path("a.rsd")), raw);

    holder.path = Path("out/a.esd");
    std::filesystem::remove(Path("a.rsd"));
    EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0);
    WriteBytes(Path("a.rsd"), Bytes(700));  // without a trailer there is no copy
    EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0);
    EXPECT_EQ(LogAfterLoading(), "Using base order TGCA. \r\n");
    WriteBytes(Path("a.rsd"), Bytes(raw.end() - 632, raw.end()));  // the trailer describes a tree that is not there
    EXPECT_EQ(sample->SaveProcessedSample(holder, 5), 0);
    EXPECT_NE(Log().find("failed to write file " + Path("out/a.esd") + " \r\n"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_empty(Path("out")));
    EXPECT_FALSE(std::filesystem::exists(Path("log.xml")));
}

}  // namespace
