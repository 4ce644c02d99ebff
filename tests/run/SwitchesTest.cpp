// SPDX-License-Identifier: MIT
#include "run/Switches.h"

#include <gtest/gtest.h>

#include "run/Plate.h"
#include "run/RunDriver.h"
#include "support/TempFolder.h"

TEST(Switches, AnOperationThatDoesNotExistFailsWithAWarning) {
    const testsupport::TempFolder temp;
    CRunDriver driver(1);
    driver.baseCallers = std::make_unique<CBaseCallerSet>(&driver);
    CPlate plate(temp.Path(), {}, &driver);
    CSampleFile sample("a.rsd", &plate);
    for (const char* unknown : {"-FQ", "-OD"}) {
        driver.baseCallers->sampleSwitches = {unknown};
        testing::internal::CaptureStderr();
        EXPECT_EQ(driver.baseCallers->ProcessSample(sample, -1, -1), 0);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  std::string("lanewright: warning: there is no operation ") + unknown + "\n");
    }
}
