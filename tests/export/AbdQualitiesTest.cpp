// SPDX-License-Identifier: MIT
// From the fractions that a library reports to the qualities that a reader of the ABD file finds.
#include <cmath>

#include "plugins/PluginFixture.h"
#include "tracewriter/TraceReaders.h"

TEST_F(PluginTest, QualitiesOfALibraryInAbdFiles) {
    const std::vector<float> reported{0, 0.5f, 0.9f, 0.99f, 0.5f, 0.999f, 0.9999f, 1, 1.2f, -0.5f, NAN};
    Report(std::vector<float>(reported.size(), 30));
    for (std::size_t i = 0; i < reported.size(); ++i)
        script->bases[i].quality = reported[i];
    script->bases[4].descriptor = 2;  // not shown
    script->firstGood = 2;
    script->lastGood = 7;  // of which the region leaves out the last
    ASSERT_EQ(Call(), 1);
    plate.outputFolder = sample.processedTrace->path = temp.Path();
    sample.processedTrace->path += "/s.esd";
    driver.baseCallers->exportToSubfolders = 0;

    ASSERT_EQ(sample.ExportAbd(*sample.processedTrace, 0), 1);
    auto tags = ReadAbif(temp.Path("s.abd"));
    EXPECT_EQ(tags["QVAL2"].Shorts(), (std::vector<int>{0, 50, 90, 99, 99, 99, 100, 120, -50, 0}));
    EXPECT_EQ(tags["PCON1"].data, (std::string{0, 3, 10, 20, 30, 40, 93, 93, 0, 0}));
    EXPECT_EQ(tags["PCON2"].data, tags["PCON1"].data);
    ASSERT_EQ(sample.ExportAbd(*sample.processedTrace, 1), 1);
    EXPECT_EQ(ReadAbif(temp.Path("s.abd"))["PCON1"].data, (std::string{10, 20, 30, 40}));
    analysis.basecallError = "no signal";
    ASSERT_EQ(sample.ExportAbd(*sample.processedTrace, 0), 1);
    EXPECT_EQ(ReadAbif(temp.Path("s.abd")).count("PCON1"), 0u);
}
