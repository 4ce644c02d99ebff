// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "export/Formats.h"
#include "records/HtmlFile.h"
#include "run/Plate.h"
#include "support/TempFolder.h"

// A whole mark-up log with these lines in three of its sections.
static std::string Layout(const std::string& esd, const std::string& abd, const std::string& text = "\r\n") {
    return "<log>\t\t\r\n<files>\t\t\r\n<esd>\r\n" + esd + "</esd>\t\t\r\n<abd>\r\n" + abd +
           "</abd>\t\t\r\n<scf>\r\n\r\n</scf>\t\t\r\n<fasta>\r\n\r\n</fasta>\t\t\r\n<txt>\r\n" + text +
           "</txt>\t\t\r\n</files>\t\t\r\n</log>\t\t\r\n";
}

class PlateRecords : public testing::Test {
  protected:
    testsupport::TempFolder temp;
    CPlate plate{temp.Path(), {}, nullptr}, gone{temp.Path("gone"), {}, nullptr};
};

TEST_F(PlateRecords, ThePlainLogGrowsByTheBytesThatAreShown) {
    const std::string first("50%s %n\0x\r\n", 11), second = "no end";
    testing::internal::CaptureStdout();
    plate.Log(first);
    CPlate(temp.Path(), {}, nullptr).Log(second);
    gone.Log("what cannot be kept is not shown");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), first + second);
    EXPECT_EQ(temp.Read("basecall.log"), first + second);
}

TEST_F(PlateRecords, EachEntryAddsALineAndLeavesTheFormerStateBehind) {
    const std::string path = "z:/out/a 1.abd", line = path + "\t\t\r\n";
    plate.AddToMarkupLog(path, SectionOf(Format::Abd));
    EXPECT_EQ(temp.Read("log.xml"), Layout("\r\n", line));
    EXPECT_EQ(temp.Read("log.xml.temp"), "");
    plate.AddToMarkupLog("t", SectionOf(Format::Text));
    plate.AddToMarkupLog(path, SectionOf(Format::Abd));
    EXPECT_EQ(temp.Read("log.xml"), Layout("\r\n", line + line, "t\t\t\r\n"));
    EXPECT_EQ(temp.Read("log.xml.temp"), Layout("\r\n", line, "t\t\t\r\n"));

    std::filesystem::remove(temp.Path("log.xml.temp"));
    temp.MakeFolder("log.xml.temp");
    testing::internal::CaptureStderr();
    gone.AddToMarkupLog("p", SectionOf(Format::Abd));
    plate.AddToMarkupLog("p", SectionOf(Format::Abd));
    gone.AddToMarkupLog("q", SectionOf(Format::Abd));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "lanewright: warning: p cannot be entered in " +
                                                          temp.Path("gone\\log.xml") +
                                                          ": No such file or directory\nCannot create a backup copy\n");
    EXPECT_EQ(temp.Read("log.xml"), Layout("\r\n", line + line, "t\t\t\r\n"));
}

// What the plate keeps of its log from one entry to the next is never believed when somebody else has written to it.
TEST_F(PlateRecords, EntriesOfOthersAndOddPathsAreReadBackAtTheNextEntry) {
    CPlate second(temp.Path(), {}, nullptr);
    plate.AddToMarkupLog("a", SectionOf(Format::Abd));
    second.AddToMarkupLog("b", SectionOf(Format::Abd));
    plate.AddToMarkupLog("c", SectionOf(Format::Text));
    EXPECT_EQ(temp.Read("log.xml"), Layout("\r\n", "a\t\t\r\nb\t\t\r\n", "c\t\t\r\n"));
    temp.Write("log.xml", Layout("\r\n", "an\t\t\r\nb\t\t\r\n", "c\t\t\r\n"));
    plate.AddToMarkupLog(" d\te ", SectionOf(Format::Sample));
    EXPECT_EQ(temp.Read("log.xml"), Layout(" d\te \t\t\r\n", "an\t\t\r\nb\t\t\r\n", "c\t\t\r\n"));
    plate.AddToMarkupLog("f", SectionOf(Format::Sample));
    EXPECT_EQ(temp.Read("log.xml"), Layout("d\t\te\t\t\r\nf\t\t\r\n", "an\t\t\r\nb\t\t\r\n", "c\t\t\r\n"));
}

TEST_F(PlateRecords, WhatOthersWroteInTheLogIsReadLineByLine) {
    const auto rewritten = [&](const std::string& before) {
        CHtmlFile(temp.Write("log.xml", before)).WriteSections();
        return temp.Read("log.xml");
    };
    std::string tidy = Layout("x\t\ty y\t\tz\t\t\r\none\nline\t\t\r\n", "p\t\tq\t\t\r\nr\t\t\r\n<ABD>\t\t\r\n");
    tidy.replace(tidy.size() - 2, 2, "last\t\t\r\n");
    EXPECT_EQ(rewritten("lost\r\n \tlost\r\n\r\n <esd> \r\n x \ty y\t\t \t z\r\none\nline\r\n<abd>\tp\tq\r\nr\r\n"
                        "<ABD>\r\n\r\n\tno key\r\n</txt>\t\r\n</log>\r\nlast"),
              tidy);
    EXPECT_EQ(rewritten(tidy), tidy);
    EXPECT_EQ(rewritten("no\ttag\r\n<!-- at all -->" + std::string(1000, ' ')), Layout("\r\n", "\r\n"));
}
