// SPDX-License-Identifier: MIT
// Clock, console and libraries.
#include <gtest/gtest.h>

#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/Library.h"
#include "support/Environment.h"

using testsupport::Environment;

TEST(Clock, TimesAreLocalAndNegativeOnesAreSetApart) {
    const Environment zone("TZ", "XYZ-2");  // two hours ahead of UTC
    EXPECT_EQ(platform::CtimeText(86400 * 8), "Fri Jan  9 02:00:00 1970\n");
    EXPECT_EQ(platform::CtimeText(2147483647), "Tue Jan 19 05:14:07 2038\n");
    EXPECT_EQ(platform::CtimeText(-1), "N/A\n");
    const platform::CalendarTime atZero = platform::LocalCalendar(-5);
    EXPECT_EQ(atZero.year * 10000 + atZero.month * 100 + atZero.day, 19700101);
    EXPECT_EQ(atZero.hour, 2);
}

TEST(Console, BoxesEndTheirLineAndQuestionsAskTheEnvironment) {
    testing::internal::CaptureStderr();
    platform::ShowBox("one");
    platform::ShowBox("two\r\n");
    const Environment yes("LANEWRIGHT_ANSWER", "yes");
    EXPECT_TRUE(platform::AskYesNo("go?"));
    const Environment other("LANEWRIGHT_ANSWER", "YES");
    EXPECT_FALSE(platform::AskYesNo(""));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one\ntwo\r\ngo? [y/N]  [y/N] ");
}

TEST(Library, ANameIsNeverSearchedFor) {
    platform::Library library;
    EXPECT_FALSE(library.Open("libm.so.6"));
    EXPECT_FALSE(library.Open(""));
    EXPECT_EQ(library.Symbol("printf"), nullptr);
    EXPECT_FALSE(library.Close());
}
