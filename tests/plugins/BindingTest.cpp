// SPDX-License-Identifier: MIT
// Which library a name or the settings lead to, how it is loaded and released, and the dye matrix that is read with it.
#include "PluginFixture.h"

class BindingTest : public PluginTest {
  protected:
    // What BindCallers reports, in a set of its own.
    std::string Bound(const std::string& settings, const std::string& file, std::int32_t result) {
        temp.Write("basecall.ini", settings);
        set = std::make_unique<CBaseCallerSet>(&driver);
        testing::internal::CaptureStdout();
        EXPECT_EQ(set->BindCallers(file), result);
        return testing::internal::GetCapturedStdout();
    }

    std::unique_ptr<CBaseCallerSet> set;
    const std::string list = "[Base Callers]\n One \tScripted.so\nTwo\t scripted.so \nThree\tbare.so\n[Default]\n";
};

TEST_F(BindingTest, NamesLeadToLibraries) {
    const std::string unlisted = "  is not listed in " + driver.settingsIniPath + " file \r\n";
    EXPECT_EQ(Bound(list + "three\ntwo\n", "", 1), "");
    EXPECT_EQ(set->currentCaller->name + set->currentCaller->folderSuffix, "Three_N_QX1");
    EXPECT_EQ(Bound(list + "two", "BARE.SO", 1), "");
    EXPECT_EQ(set->currentCaller, set->callers[2].get());
    EXPECT_EQ(Bound(list + "two", "Two", 1), "Two" + unlisted);
    EXPECT_EQ(set->currentCaller->folderSuffix, "_Scr_QX1");
    // Of two files that differ in letter case the first is found, and that one is not there.
    EXPECT_EQ(Bound(list + "Three\tThree", "scripted.so", 0),
              "Cannot load Scripted.so \r\nThree\tThree" + unlisted + "Cannot load Scripted.so \r\n");
    EXPECT_TRUE(set->dyeMatrix);
    EXPECT_FALSE(set->currentCaller);
}

TEST_F(BindingTest, ListsThatAreWrong) {
    const std::string error = "Syntax error in " + driver.settingsIniPath + " in Base Callers section. ";
    for (const char* lines : {"", "A\ta\nB=b", "A\ta\nA\tb", "A\ta\nB\ta", "A\t"})
        EXPECT_EQ(Bound(std::string("[Base Callers]\n") + lines, "", 0),
                  error + "The program will be terminated \r\n.");
    std::string many = "[Base Callers]\n";
    for (char c = 'a'; c < 'u'; ++c)
        many += std::string(1, c) + "\t" + c + "\n";
    EXPECT_EQ(Bound(many + "this line is not looked at", "", 0).find("Syntax error"), std::string::npos);
    ASSERT_EQ(set->callers.size(), 20u);
    EXPECT_EQ(set->callers[19]->id, 22931);
}

TEST_F(BindingTest, LibrariesStayLoadedWhileTheyAreCurrent) {
    const auto before = std::filesystem::current_path();
    Bound(list + "two", "", 1);
    EXPECT_EQ(set->SelectCaller("bare.so") + set->BindIndex(1) + set->BindIndex(1) + set->SelectCaller("gone"), 3);
    EXPECT_EQ(script->calls,
              "GetBaseCallerCod; CleanUp; GetBaseCallerCod; CleanUp; GetBaseCallerCod; GetBaseCallerCod; ");
    script->breaksOff = true;  // which must not end the program
    set.reset();
    EXPECT_TRUE(Said("GetBaseCallerCod; CleanUp; "));
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(BindingTest, UnattendedRunsBindOne) {
    CBaseCallerSet& one = *driver.baseCallers;
    temp.Write("basecall.ini", list + "\n[General]\nANNOTATION TURNED ON\tt\n");
    temp.Write("c/Program Files/Corvane Instrument/Quillion/bin/dyeMethod1.ini",
               "GATC, old\r\n1e-50 2 3 4\r\n5\t6 7 8 9 10 11 12 +13 14 15 1.6e1 17");
    EXPECT_EQ(one.BindOneCaller("missing"), 0);
    EXPECT_EQ(one.BindOneCaller("scripted.so"), 1);
    EXPECT_EQ(one.callers[1]->name, "One");
    EXPECT_FALSE(one.callers[1]->module.IsOpen());
    EXPECT_FALSE(one.currentCaller);
    EXPECT_EQ(one.annotationOn, 1);
    for (const auto& [lines, isOn] :
         {std::pair("T", 1), {"y", 1}, {"N", 0}, {"yes", 0}, {"", 0}, {"N\nANNOTATION TURNED ON\tY", 0}}) {
        temp.Write("basecall.ini", list + "\n[General]\nANNOTATION TURNED OFF\tY\nANNOTATION TURNED ON\t" + lines);
        CBaseCallerSet other(&driver);
        EXPECT_EQ(other.BindOneCaller("bare.so"), 1);
        EXPECT_EQ(other.annotationOn, isOn) << lines;
    }
    const Matrix4 expected = {{{6, 8, 7, 5}, {14, 16, 15, 13}, {10, 12, 11, 9}, {2, 4, 3, 0}}};
    EXPECT_EQ(one.dyeMatrix->Values(), expected);
    EXPECT_EQ(one.dyeMatrix->RowPointers()[1][0], 14);
    const char* const damaged[][2] = {{"GATN", "1"}, {"GATT", "1"}, {"GA", "1"}, {"GATC", ""}, {"GATC", "nan"}};
    for (const auto& [order, last] : damaged) {
        one.dyeMatrix->Parse(std::string(order) + "\n1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 " + last);
        EXPECT_EQ(one.dyeMatrix->Values(), matrix.Values()) << order << last;
    }
}
