// SPDX-License-Identifier: MIT
#include "lanetools/run/StoredResults.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "discovery/SplitPath.h"
#include "lanetools/run/SetAside.h"
#include "lanetools/samples/RawPlate.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/text/Utf8.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

// The result of a sample: the name that counts of those that it may have, and where the file is; both are empty if
// there is none. `reason` is why the system does not show it.
struct CStoredPlace {
    std::string name, path, reason;
};

CStoredPlace FindStored(const std::string& folder, const std::string& file) {
    const std::string stem = folder + '/' + WithoutExtension(file), called = stem + ".esd", failed = stem + ".fsd";
    for (const auto& [name, path] :
         {std::pair(called, called), std::pair(called, SetAsidePath(called)), std::pair(failed, failed)}) {
        std::error_code error;
        const fs::file_type type = fs::status(path, error).type();
        if (type != fs::file_type::not_found) return {name, path, error ? error.message() : ""};
    }
    return {};
}

std::string WhyForeign(const CSampleInfo& stored, const CSampleInfo& raw) {
    if (stored.runStart != raw.runStart) return "its run started at another time";
    return "it is named \"" + ToUtf8(stored.sampleName) + "\" and not \"" + ToUtf8(raw.sampleName) + "\"";
}

// An .esd is checked by itself: the program takes it as the result even if an .fsd exists.
void LookAt(const CPlannedPlate& plate, const CPlannedOutput& output, const std::string& file, CRunPlan& plan) {
    const auto [path, place, reason] = FindStored(output.path, file);
    if (path.empty()) return;
    if (!reason.empty()) return plan.unread.push_back({place, reason});
    const CStoredSample stored = ReadStoredFile(place);
    if (!stored.unread.empty()) return plan.unread.push_back({place, ToUtf8(stored.reason)});
    if (stored.state == SampleState::Damaged || place != path)
        return plan.damaged.push_back({path, place != path ? "it was set aside" : ToUtf8(stored.reason)});
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
