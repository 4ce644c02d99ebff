#include "lanetools/run/StoredResults.h"

#include <filesystem>
#include <system_error>

#include "discovery/SplitPath.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/text/Utf8.h"
#include "samplestore/RsdFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

// The file that counts of those that may be stored for a sample; empty when there is none.
std::string StoredPath(const std::string& folder, const std::string& file) {
    std::error_code error;
    for (const char* extension : {".esd", ".fsd"}) {
        const std::string path = folder + '/' + WithoutExtension(file) + extension;
        if (fs::exists(path, error)) return path;
    }
    return {};
}

// Why `stored` is no result of the raw sample at `path`; empty when it is one, or when that cannot be told.
std::string WhyForeign(const CSampleInfo& stored, const std::string& path) {
    CRsdFile file;
    CSampleInfo raw;
    if (file.Open(path, true) || file.ReadInfo(raw)) return {};
    if (raw.runStart != stored.runStart) return "its run started at another time";
    if (raw.sampleName.empty() || raw.sampleName == stored.sampleName) return {};
    return "it is named \"" + ToUtf8(stored.sampleName) + "\" and not \"" + ToUtf8(raw.sampleName) + "\"";
}

void LookAt(const CPlannedPlate& plate, const CPlannedOutput& output, const std::string& file, CRunPlan& plan) {
    const std::string path = StoredPath(output.path, file);
    if (path.empty()) return;
    const CStoredSample stored = ReadStoredSample(path);
    if (stored.state == SampleState::Damaged) {
        plan.damaged.push_back({path, ToUtf8(stored.reason)});
        return;
    }
    const std::string raw = plate.path + '/' + file, reason = WhyForeign(stored.info, raw);
    if (!reason.empty()) plan.foreign.push_back({path, "it is not the result of " + raw + ": " + reason});
}

}  // namespace

void LookAtStoredResults(CRunPlan& plan) {
    for (const CPlannedOutput& output : plan.outputs) {
        const CPlannedPlate& plate = plan.plates[output.plate];
        for (const std::string& file : plate.files) {
            CheckInterrupt();
            LookAt(plate, output, file, plan);
        }
    }
}

}  // namespace lanetools
