// SPDX-License-Identifier: MIT
#include "lanetools/run/RunReport.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "lanetools/samples/RawPlate.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

// The output folders of a plate, also those that were not created: their samples are missing.
std::vector<COutputFolder> OutputsOf(const CRunPlan& plan, std::size_t plate) {
    std::error_code error;
    Unread unread;  // a sample that is missing for this reason says so in its row
    std::vector<COutputFolder> outputs;
    for (const CPlannedOutput& output : plan.outputs) {
        if (output.plate != plate) continue;
        const std::string name = fs::path(output.path).filename().string();
        COutputFolder folder{output.path, name, {}};
        if (fs::is_directory(output.path, error))
            for (COutputFolder& found : ListOutputs({output.path}, unread))
                if (found.path == fs::canonical(output.path)) {
                    folder.files = std::move(found.files);
                    folder.reason = std::move(found.reason);
                }
        outputs.push_back(std::move(folder));
    }
    return outputs;
}

CStateCounts CountPlate(const CRunPlan& plan, std::size_t index) {
    const CPlannedPlate& plate = plan.plates[index];
    CRawPlate raw{plate.path, plate.name, plate.name, {}};
    for (const std::string& file : plate.files)
        raw.files.push_back(plate.path + '/' + file);
    return CountStates(Summarize(OutputsOf(plan, index), {raw}));
}

}  // namespace

CStateCounts ReportPlates(const CRunPlan& plan) {
    std::vector<CStateCounts> counts;
    std::vector<std::string> names;
    std::size_t width = 5;
    for (std::size_t i = 0; i < plan.plates.size(); ++i) {
        counts.push_back(CountPlate(plan, i));
        names.push_back(OneLine(ToUtf8(plan.plates[i].name)));
        width = std::max(width, names.back().size());
    }
    std::fprintf(stderr, "%-*s   called   failed  missing  damaged\n", static_cast<int>(width), "plate");
    CStateCounts all;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const CStateCounts& one = counts[i];
        std::fprintf(stderr, "%-*s %8zu %8zu %8zu %8zu\n", static_cast<int>(width), names[i].c_str(), one.called,
                     one.failed, one.missing, one.damaged);
        all.called += one.called;
        all.failed += one.failed;
        all.missing += one.missing;
        all.damaged += one.damaged;
    }
    return all;
}

}  // namespace lanetools
