// SPDX-License-Identifier: MIT
// A run with a sample, and the test libraries beside its settings.
#pragma once

#include "libraries/Script.h"
#include "plugins/DyeMatrix.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/SampleFixture.h"
#include "support/Environment.h"

class PluginTest : public sampletest::SampleTest {
  protected:
    PluginTest() {
        std::filesystem::copy(LANEWRIGHT_TEST_LIBRARIES, temp.Path());
        driver.unattended = 1;
        driver.settingsIniPath = temp.Path("basecall.ini");
        driver.baseCallers = std::make_unique<CBaseCallerSet>(&driver);
        CCapTrace& raw = *sample.CreateProcessedTrace("raw", 0, nullptr)->trace;
        raw.scanCount = 100;
        raw.BuildFromScans(sampletest::NumberedScans(100), {});
        for (std::size_t s = 5; s < 100; s += 10)
            raw.channels[s / 10 % 4][s] += 9000;  // a peak, in channels 1 to 4 in turn
        Use("scripted");
    }
    void Use(const std::string& name) {
        ASSERT_TRUE(module.Open(temp.Path(name + ".so")));
        script = static_cast<Script*>(module.Symbol("script"));
    }
    std::int32_t Call(std::int32_t first = -1, std::int32_t last = -1) {
        trace = sample.CreateProcessedTrace("processed", 1, nullptr)->Processed();
        if (script) script->calls.clear();
        return sample.BaseCall(module, matrix, first, last, 5);
    }
    // Bases with one peak each, at these positions.
    void Report(const std::vector<float>& positions) {
        peaks.assign(positions.size(), {});
        script->bases.assign(positions.size(), {'C', 1, 0.25f, nullptr, {1, 2, 3, 4}, 7});
        script->count = static_cast<std::int32_t>(positions.size());
        for (std::size_t i = 0; i < positions.size(); ++i)
            (script->bases[i].peaks = &peaks[i])->position = positions[i];
    }
    // Whether the library was called like that; the calls are shown when the test expected it otherwise.
    testing::AssertionResult Said(const std::string& text) const {
        const bool found = script->calls.find(text) != std::string::npos;
        return (found ? testing::AssertionSuccess() : testing::AssertionFailure()) << "the calls: " << script->calls;
    }
    std::pair<int, int> Region() const { return {trace->calledBases.goodStart, trace->calledBases.goodLength}; }

    testsupport::Environment store{"QUILLION_REGISTRY", temp.Write("r.ini", "[Drives]\nC = ./c\n")};
    CRunDriver driver{1};
    CPlate plate{"", {}, &driver};
    CSampleFile sample{"s.rsd", &plate};
    CAnalysisInfo& analysis = sample.info.analysis;
    platform::Library module;
    Script* script = nullptr;
    std::vector<PeakRecord> peaks;
    CDyeMatrix matrix;
    CProcessedTrace* trace = nullptr;
};
