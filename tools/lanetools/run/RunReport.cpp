// SPDX-License-Identifier: MIT
#include "lanetools/run/RunReport.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "lanetools/run/ShellQuote.h"
#include "lanetools/samples/RawPlate.h"
#include "lanetools/samples/SampleRow.h"
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

std::vector<CSampleRow> RowsOf(const CRunPlan& plan, std::size_t index) {
    const CPlannedPlate& plate = plan.plates[index];
    CRawPlate raw{plate.path, plate.name, plate.name, {}};
    for (const std::string& file : plate.files)
        raw.files.push_back(plate.path + '/' + file);
    return Summarize(OutputsOf(plan, index), {raw});
}

std::string WhyNotCalled(const CSampleRow& row, const Losses& losses) {
    std::string text = StateName(row.state);
    const auto loss = losses.find(row.outputFolder + '/' + fs::path(row.rawPath).stem().string());
    if (!row.reason.empty())
        text += ": " + row.reason;
    else if (loss != losses.end())
        text += ": " + ToUtf8(loss->second);
    return text;
}

// The samples that are not called, each with the reason, as lines.
class CShortfall {
  public:
    CShortfall(const CRunPlan& all, const Losses& known) : plan(all), losses(known) {}

    void Add(const std::string& plate, const CSampleRow& row) {
        if (row.state == SampleState::Called) return;
        ++count;
        if (lines.size() == mostLines) return;
        const bool isByLibrary = plan.libraries.chosen.size() > 1;
        const std::string folder = isByLibrary ? ToUtf8(fs::path(row.outputFolder).filename().string()) : plate;
        const std::string well = row.well.empty() ? "" : row.well + ' ';
        lines.push_back(OneLine(folder + ": " + well + row.file + ": " + WhyNotCalled(row, losses)));
    }

    void Print() const {
        for (const std::string& line : lines)
            std::fprintf(stderr, "lanetools: %s\n", line.c_str());
        if (count == lines.size()) return;
        const std::string command = ShellQuoted({"lanetools", "summary", plan.options.output});
        std::fprintf(stderr, "lanetools: and %zu more: %s\n", count - lines.size(), command.c_str());
    }

  private:
    static constexpr std::size_t mostLines = 20;

    const CRunPlan& plan;
    const Losses& losses;
    std::vector<std::string> lines;
    std::size_t count = 0;
};

void PrintTable(const std::vector<std::string>& names, const std::vector<CStateCounts>& counts) {
    std::size_t width = 5;
    for (const std::string& name : names)
        width = std::max(width, name.size());
    std::fprintf(stderr, "%-*s   called   failed  missing  damaged\n", static_cast<int>(width), "plate");
    for (std::size_t i = 0; i < counts.size(); ++i)
        std::fprintf(stderr, "%-*s %8zu %8zu %8zu %8zu\n", static_cast<int>(width), names[i].c_str(), counts[i].called,
                     counts[i].failed, counts[i].missing, counts[i].damaged);
}

}  // namespace

CStateCounts ReportPlates(const CRunPlan& plan, const Losses& losses) {
    std::vector<CStateCounts> counts;
    std::vector<std::string> names;
    CStateCounts all;
    CShortfall shortfall(plan, losses);
    for (std::size_t i = 0; i < plan.plates.size(); ++i) {
        names.push_back(OneLine(ToUtf8(plan.plates[i].name)));
        CStateCounts& one = counts.emplace_back();
        for (const CSampleRow& row : RowsOf(plan, i)) {
            one.Add(row.state);
            all.Add(row.state);
            shortfall.Add(names.back(), row);
        }
    }
    if (names.size() > 1) {
        names.emplace_back("total");
        counts.push_back(all);
    }
    PrintTable(names, counts);
    shortfall.Print();
    return all;
}

}  // namespace lanetools
