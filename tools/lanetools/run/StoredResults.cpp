// SPDX-License-Identifier: MIT
#include "lanetools/run/StoredResults.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "discovery/SplitPath.h"
#include "lanetools/samples/RawPlate.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/text/Utf8.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

// The file that counts of those that may be stored for a sample; empty if none exists.
std::string StoredPath(const std::string& folder, const std::string& file) {
    std::error_code error;
    for (const char* extension : {".esd", ".fsd"}) {
        const std::string path = folder + '/' + WithoutExtension(file) + extension;
        if (fs::exists(path, error)) return path;
    }
    return {};
}

std::string WhyForeign(const CSampleInfo& stored, const CSampleInfo& raw) {
    if (stored.runStart != raw.runStart) return "its run started at another time";
    return "it is named \"" + ToUtf8(stored.sampleName) + "\" and not \"" + ToUtf8(raw.sampleName) + "\"";
}

// An .esd is checked by itself: the program takes it as the result even if an .fsd exists.
void LookAt(const CPlannedPlate& plate, const CPlannedOutput& output, const std::string& file, CRunPlan& plan) {
    const std::string path = StoredPath(output.path, file);
    if (path.empty()) return;
    const CStoredSample stored = ReadStoredFile(path);
    if (stored.state == SampleState::Damaged) {
        plan.damaged.push_back({path, ToUtf8(stored.reason)});
        return;
    }
    const CRawSample raw = ReadRawSample(plate.path + '/' + file, plate.name);
    if (!raw.reason.empty() || IsResultOf(stored.info, raw.info)) return;
    plan.foreign.push_back({path, "it is not the result of " + raw.path + ": " + WhyForeign(stored.info, raw.info)});
}

}  // namespace

void LookAtStoredResults(CRunPlan& plan) {
    std::size_t count = 0;
    for (const CPlannedOutput& output : plan.outputs)
        count += plan.plates[output.plate].files.size();
    CProgress progress("stored results checked", count);
    for (const CPlannedOutput& output : plan.outputs) {
        const CPlannedPlate& plate = plan.plates[output.plate];
        for (const std::string& file : plate.files) {
            CheckInterrupt();
            LookAt(plate, output, file, plan);
            progress.Step();
        }
    }
}

}  // namespace lanetools
