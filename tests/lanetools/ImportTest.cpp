// SPDX-License-Identifier: MIT
// lanetools import as a user runs it, over files that the trace writer makes.
#include <sys/stat.h>

#include <algorithm>
#include <regex>
#include <set>

#include "lanetools/InstrumentFile.h"
#include "lanetools/import/StoreSample.h"
#include "support/PlainUser.h"
#include "tools/ToolsFixture.h"

namespace {

using lanetools::Stored;
using lanetools::StoreSample;
using lanetoolstest::CInstrumentFile;
using sampletest::XorOfFile;

class ImportTest : public toolstest::ToolsTest {
  protected:
    int Import(const std::string& words) const { return Run("(" LANETOOLS_PROGRAM " import " + words + " 2>errors)"); }
    std::string Report() const { return temp.Read("printed"); }
    std::string Errors() const { return temp.Read("errors"); }
    void Make(const std::string& name, const CInstrumentFile& file) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        file.Write(Path(name));
    }
    CSampleInfo Info(const std::string& name) const {
        CSampleInfo info;
        std::vector<ScanRecord> scans;
        sampletest::ReadBack(Path(name), info, scans);
        return info;
    }
};

std::string FieldsOf(const CSampleInfo& info) {
    std::string text;
    for (const std::string& field :
         {info.plateId, info.sampleName, info.wellId, info.comment, info.machineId, info.chemistryName,
          info.chemistryApplication, info.channel[2].base, info.channel[2].dye, FieldText(info.channelBase[2]),
          FieldText(info.instrumentId), FieldText(info.operatorName)})
        text += field + '|';
    return text;
}

TEST_F(ImportTest, SampleHoldsWhatTheInstrumentRecorded) {
    CInstrumentFile file;
    file.curves[{"DATA", 2}] = {-40, 0, 32767, 5, 5};  // one scan fewer than the others
    file.curves[{"DATA", 6}] = {-9, 70, 80};
    file.Text("TUBE", "b7").Text("CTID", "", 1).Text("CTNM", "../p*").Text("CMNT", "note").Text("MCHN", "M-12");
    file.Text("PDMF", "KB_POP7.mob").Text("DySN", "Z-Dye").Text("DyeN", "third", 3).Text("MODL", "3730");
    file.Text("User", std::string(40, 'u'));
    file.numbers = {{"EPVt", 8500}, {"Tmpr", 60}};
    file.Moment(1, 2024, 5, 1, {10, 20, 30});
    file.Moment(2, 2024, 5, 1, {11, 20, 30});
    Make("in/a.ab1", file);
    ASSERT_EQ(Import("in -o out"), 0);
    EXPECT_EQ(Report(), "in/a.ab1\tout/_._p_/_._p_B07.rsd\tchannels cut to 5 scans\n");

    CSampleInfo info;
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(Path("out/_._p_/_._p_B07.rsd"), info, scans);
    EXPECT_EQ(XorOfFile(Path("out/_._p_/_._p_B07.rsd")), 0u);
    ASSERT_EQ(scans.size(), 5u);
    EXPECT_EQ(info.scanCount, 5u);
    EXPECT_EQ(scans[0].words, (std::array<std::uint32_t, 5>{0, 1, 0, 0, 5}));
    EXPECT_EQ(scans[2].words, (std::array<std::uint32_t, 5>{70, 3, 32807, 0, 5}));
    EXPECT_EQ(scans[4].words, (std::array<std::uint32_t, 5>{80, 5, 45, 0, 5}));
    EXPECT_EQ(FieldsOf(info), "../p*|sample|B07|note; channels lifted by 0 40 0 0|M-12|KB_POP7|Z-Dye|T|third|T|3730|" +
                                  std::string(29, 'u') + "|");
    EXPECT_EQ(info.runVoltage, 8500.0f);
    EXPECT_EQ(info.temperature, 60.0f);
    EXPECT_EQ(info.runStart, 1714558830);
    EXPECT_EQ(info.runStop, info.runStart + 3600);
    EXPECT_EQ(info.version, 1.2f);
    EXPECT_FALSE(info.processed);
    EXPECT_TRUE(info.saturated);
    EXPECT_EQ(info.plateColumns, 12);
}

TEST_F(ImportTest, ScanRateIsTheNearestToTheTimeOfCollection) {
    const auto rateOf = [&](std::size_t scans, std::vector<std::uint8_t> stop) {
        CInstrumentFile file;
        for (auto& [tag, curve] : file.curves)
            curve.assign(scans, 1);
        file.Moment(3, 2024, 5, 1, {10, 0, 0});
        file.Moment(4, 2024, 5, 1, std::move(stop));
        Make("a.ab1", file);
        EXPECT_EQ(Import("a.ab1 -o out --plate " + std::to_string(scans)), 0);
        const std::string plate = "out/" + std::to_string(scans) + '/' + std::to_string(scans);
        return Info(plate + "_a.rsd").scanRate;
    };
    EXPECT_EQ(rateOf(232, {10, 1, 40}), 0);  // 2.32 a second: half-way to 2.89 is 2.325
    EXPECT_EQ(rateOf(233, {10, 1, 40}), 1);
    EXPECT_EQ(rateOf(321, {10, 1, 40}), 3);
    EXPECT_EQ(rateOf(60, {10, 1, 0}), 0);
    EXPECT_EQ(rateOf(59, {10, 0, 59}), 1);  // less than a minute
    EXPECT_EQ(rateOf(61, {24, 0, 0}), 1);   // no time of day
}

TEST_F(ImportTest, NoSampleIsLostToAName) {
    CInstrumentFile file;
    file.Text("CTID", "p").Text("TUBE", "A1");
    Make("in/a.ab1", file);
    Make("in/b.AB1", file.Text("TUBE", "a001").Text("SMPL", "second"));
    Make("in/c.abi", file.Text("TUBE", "Z99"));
    Make("in/d.ab1", file.Text("TUBE", "P24").Text("CTID", "q?"));
    Make("in/e.ab1", file.Text("CTID", "q*"));
    Make("in/other.txt", file);
    Make("in2/f.ab1", file.Text("CTID", "p").Text("TUBE", "A1").Text("SMPL", "third"));
    const std::string first =
        "in/a.ab1\tout/p/pA01.rsd\t\n"
        "in/b.AB1\tout/p/pA01-2.rsd\twell A01 is taken\n"
        "in/c.abi\tout/p/p_c.rsd\tno well: \"Z99\"\n"
        "in/d.ab1\tout/q_/q_P24.rsd\t\n"
        "in/e.ab1\tout/q_-2/q_P24.rsd\tthe folder name q_ is taken\n"
        "in/a.ab1\tout/p/pA01.rsd\tthe same file as in/a.ab1\n";
    ASSERT_EQ(Import("in ./in/a.ab1 -o out"), 0);
    EXPECT_EQ(Report(), std::regex_replace(first, std::regex("\nin/a.ab1"), "\n./in/a.ab1"));
    EXPECT_EQ(Info("out/q_/q_P24.rsd").plateId, "q?");
    EXPECT_EQ(Info("out/q_/q_P24.rsd").plateColumns, 24);
    EXPECT_EQ(Info("out/p/pA01.rsd").plateColumns, 12);

    // A third sample of the well, by itself; then all of them once more, in another order.
    ASSERT_EQ(Import("in2 -o out"), 0);
    EXPECT_EQ(Report(), "in2/f.ab1\tout/p/pA01-3.rsd\twell A01 is taken\n");
    struct stat before {
    }, after{};
    ASSERT_EQ(::stat(Path("out/p/pA01.rsd").c_str(), &before), 0);
    ASSERT_EQ(Import("in/e.ab1 in2 in/b.AB1 in/a.ab1 -o out"), 0);
    EXPECT_EQ(Report(),
              "in/e.ab1\tout/q_-2/q_P24.rsd\tthe folder name q_ is taken; already imported\n"
              "in2/f.ab1\tout/p/pA01-3.rsd\twell A01 is taken; already imported\n"
              "in/b.AB1\tout/p/pA01-2.rsd\twell A01 is taken; already imported\n"
              "in/a.ab1\tout/p/pA01.rsd\talready imported\n");
    ASSERT_EQ(::stat(Path("out/p/pA01.rsd").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(ImportTest, OtherFilesStay) {
    CInstrumentFile file;
    Make("in/a b.ab1", file.Text("TUBE", "A1"));
    temp.Write("out/in/inA01.rsd", "no sample at all");
    temp.Write("out/in/a b.esd", "nor this");
    ASSERT_EQ(Import("in -o out/"), 0);
    EXPECT_EQ(Report(), "in/a b.ab1\tout/in/inA01-2.rsd\twell A01 is taken\n");
    ASSERT_EQ(Import("in -o out --name file"), 0);
    EXPECT_EQ(Report(), "in/a b.ab1\tout/in/a b-2.rsd\tthe name a b is taken\n");
    EXPECT_EQ(temp.Read("out/in/inA01.rsd") + temp.Read("out/in/a b.esd"), "no sample at allnor this");
    EXPECT_EQ(Info("out/in/inA01-2.rsd").plateId, "in");

    // A plate that becomes a large one: the sample's own file is written again.
    Make("in/b.ab1", file.Text("TUBE", "I1"));
    ASSERT_EQ(Import("in -o out"), 0);
    EXPECT_EQ(Report(), "in/a b.ab1\tout/in/inA01-2.rsd\twell A01 is taken; updated\nin/b.ab1\tout/in/inI01.rsd\t\n");
    EXPECT_EQ(Info("out/in/inA01-2.rsd").plateColumns, 24);

    // No name is longer than 100 characters.
    ASSERT_EQ(Import("'in/a b.ab1' in/b.ab1 -o out --plate " + std::string(150, 'x')), 0);
    const std::string plate(100, 'x');
    EXPECT_TRUE(std::filesystem::exists(Path("out/" + plate + '/' + plate.substr(7) + "A01.rsd")));
}

// Both store samples of the same wells, so each asks for names that the other takes meanwhile.
TEST_F(ImportTest, TwoAtOnceLoseNothing) {
    CInstrumentFile file;
    file.Text("CTID", "p");
    constexpr int samples = 12;
    for (int i = 1; i <= samples; ++i)
        for (const std::string folder : {"a", "b"}) {
            const std::string number = std::to_string(i);
            Make(folder + '/' + number + ".ab1", file.Text("TUBE", 'A' + number).Text("SMPL", folder + number));
        }
    const std::vector<std::pair<const char*, int>> volumes{{"", 20}, {"flags", 4}, {"flags links", 4}};
    for (const auto& [lacks, rounds] : volumes) {
        for (int round = 0; round < rounds; ++round) {
            const std::string setUp = std::string("export ASAN_OPTIONS=verify_asan_link_order=0 VOLUME_LACKS='") +
                                      lacks + "' LD_PRELOAD=" VOLUME_SHIM ";";
            ASSERT_EQ(Run("(" + setUp + LANETOOLS_PROGRAM " import a -o out >of_a & " + setUp +
                          LANETOOLS_PROGRAM " import b -o out >of_b; code=$?; wait %1 && exit $code)"),
                      0)
                << temp.Read("printed");
            std::set<std::string> names;
            for (const auto& entry : std::filesystem::directory_iterator(Path("out/p")))
                names.insert(Info("out/p/" + entry.path().filename().string()).sampleName);
            ASSERT_EQ(names.size(), 2u * samples) << lacks << ", round " << round;
            EXPECT_EQ(std::count(names.begin(), names.end(), ""), 0) << "a file that is no sample";
            std::filesystem::remove_all(Path("out"));
        }
    }
}

TEST_F(ImportTest, CopiesOfAFileAreOneSample) {
    CInstrumentFile file;
    Make("in/a.ab1", file.Text("CTID", "p").Text("TUBE", "A1"));
    std::filesystem::copy_file(Path("in/a.ab1"), Path("in/b.ab1"));
    ASSERT_EQ(Import("in/a.ab1 -o two"), 0);
    ASSERT_EQ(Import("in/b.ab1 -o two"), 0);
    EXPECT_EQ(Report(), "in/b.ab1\ttwo/p/pA01.rsd\talready imported as a.ab1\n");
    ASSERT_EQ(Import("in -o one"), 0);
    EXPECT_EQ(Report(), "in/a.ab1\tone/p/pA01.rsd\t\nin/b.ab1\tone/p/pA01.rsd\talready imported as a.ab1\n");
    EXPECT_EQ(temp.Read("one/p/pA01.rsd"), temp.Read("two/p/pA01.rsd"));
    EXPECT_EQ(Info("one/p/pA01.rsd").sourceFile, "a.ab1");
    // With the names of the files they are two, and a sample that names no source gets one.
    ASSERT_EQ(Import("in --name file -o one"), 0);
    EXPECT_EQ(Info("one/p/b.rsd").sourceFile, "b.ab1");
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    sampletest::ReadBack(Path("two/p/pA01.rsd"), info, scans);
    info.sourceFile.clear();
    ASSERT_EQ(WriteSample(Path("two/p/pA01.rsd"), info, scans), 0);
    ASSERT_EQ(Import("in -o two"), 0);
    EXPECT_EQ(Info("two/p/pA01.rsd").sourceFile, "a.ab1");
}

// What has been reported must outlive a power cut, so nothing is reported if that is not certain.
TEST_F(ImportTest, ReportsWhatIsOnTheDisk) {
    Make("in/a.ab1", CInstrumentFile());
    EXPECT_EQ(Run("ASAN_OPTIONS=verify_asan_link_order=0 VOLUME_LACKS=sync LD_PRELOAD=" VOLUME_SHIM
                  " " LANETOOLS_PROGRAM " import in -o out/plates"),
              1);
    EXPECT_EQ(Report(), "lanetools: out/plates: Input/output error\n");
}

TEST_F(ImportTest, CompressedFilesAndFoldersBelow) {
    CInstrumentFile file;
    Make("in/deep/a.ab1", file.Text("TUBE", "A1"));
    Make("in/deep/down/b.AB1", file.Text("TUBE", "A2"));
    Make("in/deep/c.abi", file.Text("TUBE", "A3"));
    ASSERT_EQ(
        Run("cat in/deep/a.ab1 | gzip >whole.gz; gzip in/deep/c.abi; ln -s .. in/deep/up; cp whole.gz in/deep/text.txt;"
            "(head -c 300 in/deep/a.ab1 | gzip; tail -c +301 in/deep/a.ab1 | gzip) >in/deep/members.ab1.GZ;"
            "mkdir bad; head -c -9 whole.gz >bad/cut.ab1.gz;"
            "(head -c 40 whole.gz; echo; tail -c +42 whole.gz) >bad/damaged.ab1.gz;"
            "head -c 70000000 /dev/zero | gzip >bad/bomb.ab1.gz; printf '\\037\\213' >bad/head.ab1.gz;"
            "printf '.scf%200s' '' >bad/x.ab1; cp in/deep/a.ab1 x.fsa; gzip x.fsa"),
        0);
    EXPECT_EQ(Import("in -o out"), 2);
    EXPECT_EQ(Errors(),
              "lanetools: in: no .ab1 or .abi file in this folder, but one folder deeper: import --recursive\n");
    ASSERT_EQ(Import("--recursive in -o out"), 0);
    EXPECT_EQ(Report(),
              "in/deep/a.ab1\tout/deep/deepA01.rsd\t\n"
              "in/deep/c.abi.gz\tout/deep/deepA03.rsd\t\n"
              "in/deep/members.ab1.GZ\tout/deep/deepA01.rsd\talready imported as a.ab1\n"
              "in/deep/down/b.AB1\tout/down/downA02.rsd\t\n");
    EXPECT_EQ(Info("out/deep/deepA03.rsd").sourceFile, "c.abi.gz");
    ASSERT_EQ(Import("whole.gz -o out --name file --plate w"), 0);
    EXPECT_EQ(Report(), "whole.gz\tout/w/whole.rsd\t\n");
    ASSERT_EQ(Run("mkdir -p seen/below; chmod 444 seen"), 0);
    EXPECT_EQ(Run(testsupport::WithoutPrivileges() + LANETOOLS_PROGRAM " import -r seen whole.gz -o out --plate w"), 3);
    EXPECT_EQ(Report(), "seen/below\t-\tPermission denied\nwhole.gz\tout/w/wA01.rsd\t\n");
    ASSERT_EQ(Run("chmod 755 seen"), 0);
    EXPECT_EQ(Import("bad x.fsa.gz -o out"), 3);
    EXPECT_EQ(Report(),
              "bad/bomb.ab1.gz\t-\ttoo large for a run: it unpacks to more than 64 MiB\n"
              "bad/cut.ab1.gz\t-\tdamaged: the compressed file ends too early\n"
              "bad/damaged.ab1.gz\t-\tdamaged: it cannot be unpacked\n"
              "bad/head.ab1.gz\t-\tdamaged: the compressed file ends too early\n"
              "bad/x.ab1\t-\tan SCF file: it has processed data only, which cannot be called\n"
              "x.fsa.gz\t-\ta fragment analysis (.fsa), not a sequencing run\n");
}

TEST_F(ImportTest, AFileWithTheSameBytesMayBeWriteProtected) {
    const std::string path = Path("plate/a.rsd");
    const CSampleInfo info = sampletest::RawInfo(3);
    const auto scans = sampletest::NumberedScans(3);
    ASSERT_EQ(StoreSample(path, info, scans, false), Stored::New);
    CSampleInfo other = info;
    other.comment = "another";
    std::filesystem::permissions(Path(""), std::filesystem::perms(0755));
    const testsupport::PlainUser user;
    EXPECT_EQ(StoreSample(path, info, scans, true), Stored::Unchanged);
    EXPECT_THROW(StoreSample(path, other, scans, true), lanetools::CNotStored);
    EXPECT_THROW(StoreSample(Path("new/a.rsd"), info, scans, false), lanetools::CNotStored);
}

TEST_F(ImportTest, WhatCannotBeImportedIsReportedAndTheRestGoesOn) {
    CInstrumentFile good;
    Make("in/good.ab1", good.Text("TUBE", "A1"));
    Make("in/letters.ab1", CInstrumentFile().Text("FWO_", "GATT"));
    CInstrumentFile lacking;
    lacking.curves.erase({"DATA", 3});
    Make("in/lacking.ab1", lacking);
    temp.Write("in/text.ab1", "no such file");
    temp.MakeFolder("in/folder.ab1");
    Make("x.fsa", CInstrumentFile());
    temp.MakeFolder("empty");
    EXPECT_EQ(Import("x.fsa in empty -o out"), 3);
    EXPECT_EQ(Report(),
              "x.fsa\t-\ta fragment analysis (.fsa), not a sequencing run\n"
              "in/good.ab1\tout/in/inA01.rsd\t\n"
              "in/lacking.ab1\t-\tno raw channel DATA 3\n"
              "in/letters.ab1\t-\tthe channels are not those of A, C, G and T: FWO_ is \"GATT\"\n"
              "in/text.ab1\t-\tit is not an ABIF file\n"
              "empty\t-\tno .ab1 or .abi file in this folder\n");
    // A file with the name of the plate's folder is left alone.
    temp.Write("out2/in", "");
    EXPECT_EQ(Import("in/good.ab1 -o out2"), 0);
    EXPECT_EQ(Report(), "in/good.ab1\tout2/in-2/inA01.rsd\tthe folder name in is taken\n");
}

TEST_F(ImportTest, RefusesBeforeAnythingIsWritten) {
    Make("in/good.ab1", CInstrumentFile());
    temp.MakeFolder("empty");
    temp.Write("file", "");
    for (const auto& [words, text] :
         std::vector<std::pair<std::string, std::string>>{{"in gone.ab1 -o out", "gone.ab1: No such file"},
                                                          {"empty -o out", "empty: no .ab1"},
                                                          {"in -o file/out", "file/out: Not a directory"},
                                                          {"in -o 'a\\b'", "a\\b: a folder of plates"},
                                                          {"in -o out --plate ''", "--plate: the id is empty"},
                                                          {"in -o out --name stem", "stem is neither well nor file"},
                                                          {"in -o ''", "--output: the path is empty"},
                                                          {"'' -o out", "FILES-OR-FOLDERS: the path is empty"},
                                                          {"in", "lanetools: --output is required"}}) {
        EXPECT_EQ(Import(words), 2) << words;
        EXPECT_NE(Errors().find(text), std::string::npos) << words << ": " << Errors();
        EXPECT_EQ(Report(), "");
        EXPECT_FALSE(std::filesystem::exists(Path("out")));
    }
}

}  // namespace
