// SPDX-License-Identifier: MIT
// The places of a run, and the settings of a base-caller set.
#include <gtest/gtest.h>

#include "run/RunDriver.h"
#include "support/Environment.h"
#include "support/TempFolder.h"

namespace {

class PathsOfARun : public testing::Test {
  protected:
    void Store(const std::string& lines) { folder.Write("r.ini", "[Quillion\\Base Calling]\n" + lines); }

    // What `call` writes on standard error, where boxes show.
    template <class Call>
    std::string Boxes(Call call) {
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
        call();
        testing::internal::GetCapturedStdout();
        return testing::internal::GetCapturedStderr();
    }

    testsupport::TempFolder folder;
    testsupport::Environment store{"QUILLION_REGISTRY", folder.Path("r.ini")};
};

}  // namespace

TEST_F(PathsOfARun, SettingsLieWhereTheRegistrySays) {
    CRunDriver driver(0);
    EXPECT_EQ(Boxes([&] { EXPECT_EQ(driver.LocateSettings(), 0); }), "Cannot locate    file \r\n");
    folder.Write("conf/basecall.ini", "");
    Store("Path = ./conf/\n[Quillion\\Strand Reader]\nPath = ./reader");
    EXPECT_EQ(Boxes([&] { EXPECT_EQ(driver.LocateSettings(), 0); }),
              "Cannot locate  " + folder.Path("reader") + "\\StrandReader.ini  file \r\n");
    EXPECT_EQ(driver.settingsIniPath, folder.Path("conf/\\basecall.ini"));
    folder.Write("reader/StrandReader.ini", "");
    EXPECT_EQ(driver.LocateSettings(), 1);
    EXPECT_EQ(driver.analysisIniPath, folder.Path("reader\\StrandReader.ini"));
}

TEST_F(PathsOfARun, OutputFallsBackToTheInstallation) {
    CRunDriver driver(1);
    folder.MakeFolder("q");
    Store("AnalyzedDataPath = ./none/out\nQuillionDir = ./q");
    const std::string reported = "Specified path doesn't exist: " + folder.Path("none/out") + "\r\n";
    EXPECT_EQ(Boxes([&] { EXPECT_EQ(driver.SetDefaultOutputFolder(), 1); }), reported);
    EXPECT_EQ(driver.outputFolder, folder.Path("q\\AnalyzedData"));
    EXPECT_TRUE(folder.Has("q/AnalyzedData"));
    Store("AnalyzedDataPath = ./none/out");
    EXPECT_EQ(Boxes([&] { EXPECT_EQ(driver.SetDefaultOutputFolder(), 0); }), reported);
    // Something of that name is left to the later write.
    EXPECT_EQ(driver.MakeFolder(folder.Path("r.ini")), 1);
}

TEST_F(PathsOfARun, GeneralSettingsReplaceTheDefaults) {
    CRunDriver driver(0);
    driver.analysisIniPath = folder.Write("StrandReader.ini",
                                          "[General]\r\nEXPORT IF BASE CALLING FAILED\tyes\r\n"
                                          "ADD EXTENSIONS TO EXPORTED FILE NAMES\tt\r\nEXPORT TO SUBFOLDERS = N\r\n"
                                          "ALLOW USER GOOD REGION\tY\r\nUSER QUALITY CUTOFF\t15\r\n"
                                          "USER QUALITY CUTOFF\t 25%\r\nAllOWED JUNK %\tabc\r\n"
                                          "QUALITY WINDOW\t99999999999\r\n");
    const CBaseCallerSet callers(&driver);
    EXPECT_EQ(callers.skipFailedExports, 1);
    EXPECT_EQ(callers.noExtensions, 0);
    EXPECT_EQ(callers.exportToSubfolders, 1);
    EXPECT_EQ(callers.allowUserGoodRegion, 0);
    EXPECT_EQ(callers.userQualityCutoff, 25);
    EXPECT_EQ(callers.allowedJunkPercent, 0);
    EXPECT_EQ(callers.qualityWindow, 2147483647);
}
