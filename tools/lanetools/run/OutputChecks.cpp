// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "discovery/SplitPath.h"
#include "lanetools/run/Checks.h"
#include "lanetools/run/Findings.h"
#include "lanetools/run/Libraries.h"
#include "lanetools/run/RunPlan.h"
#include "lanetools/run/SwitchWords.h"
#include "lanetools/system/Access.h"
#include "platform/Drives.h"
#include "run/Switches.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

bool Exists(const std::string& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

// The reason why a folder with files cannot be created at the path; empty if it can.
std::string WhyNoFolder(const std::string& path) {
    return WhyNoFilesIn(Exists(path) ? path : fs::path(path).parent_path().string());
}

// The reason why the file at a path, as the program reads it, cannot be written; empty if it can.
std::string WhyNoFile(const std::string& path) {
    const auto native = platform::NativePath(path);
    if (!native) return "the drive does not exist";
    return Exists(*native) ? WhyNotWritable(*native) : WhyNoFilesIn(fs::absolute(*native).parent_path().string());
}

bool IsWithin(const std::string& path, const std::string& folder) {
    return path == folder || path.starts_with(folder == "/" ? folder : folder + '/');
}

// Bytes of the raw samples that have no stored calls yet; a stored sample is about as large as its raw one.
std::uint64_t BytesToStore(const CRunPlan& plan) {
    std::uint64_t bytes = 0;
    std::error_code error;
    for (const CPlannedOutput& output : plan.outputs)
        for (const std::string& file : plan.plates[output.plate].files) {
            if (Exists(output.path + '/' + WithoutExtension(file) + ".esd")) continue;
            const std::uintmax_t size = fs::file_size(plan.plates[output.plate].path + '/' + file, error);
            if (!error) bytes += size;
        }
    return bytes;
}

}  // namespace

void CheckOutputsDiffer(const CRunPlan& plan, CFindings& findings) {
    std::map<std::string, const CPlannedPlate*> plates;
    for (const CPlannedPlate& plate : plan.plates) {
        const auto [first, isNew] = plates.emplace(plate.name, &plate);
        if (!isNew && first->second->path == plate.path)
            findings.Add(plate.given, "the plate is given twice");
        else if (!isNew)
            findings.Add(plate.given, "it shares its output folder with " + first->second->given +
                                          ", and would get that one's results");
    }
    // The codes of two libraries may be equal, or may make the names of two plates equal.
    std::map<std::string, const CPlannedOutput*> outputs;
    for (const CPlannedOutput& output : plan.outputs) {
        const auto [owner, isNew] = outputs.emplace(output.path, &output);
        const CPlannedOutput& first = *owner->second;
        if (!isNew && (first.plate == output.plate || plan.plates[first.plate].name != plan.plates[output.plate].name))
            findings.Add(output.path, "the results of " + plan.plates[first.plate].given + " by " +
                                          plan.libraries.File(first.library) + " and of " +
                                          plan.plates[output.plate].given + " by " +
                                          plan.libraries.File(output.library) + " would both go there");
    }
}

void CheckOutputIsOutside(const CRunPlan& plan, CFindings& findings) {
    for (const CPlannedPlate& plate : plan.plates) {
        if (!plate.problem.empty()) continue;
        if (IsWithin(plan.output, plate.path))
            findings.Add(plan.output, "the output is inside the plate " + plate.path);
        for (const CPlannedOutput& output : plan.outputs)
            if (IsWithin(plate.path, output.path))
                findings.Add(plate.given, "the plate is inside a folder of results: " + output.path);
    }
}

void CheckOutputIsWritable(const CRunPlan& plan, CFindings& findings) {
    const std::string reason = WhyNoFolder(plan.output);
    if (!reason.empty()) return findings.Add(plan.output, "no results can be written there: " + reason);
    if (!Exists(plan.output)) return;
    for (const CPlannedOutput& output : plan.outputs)
        if (const std::string why = WhyNoFolder(output.path); !why.empty())
            findings.Add(output.path, "no results can be written there: " + why);
}

void CheckFastaIsWritable(const CRunPlan& plan, CFindings& findings) {
    for (const Switch id : {Switch::Fasta, Switch::FastaAppended})
        for (const std::string& file : plan.switches.FilesOf(id))
            if (const std::string reason = WhyNoFile(file); !reason.empty())
                findings.Add(file, "the file cannot be written: " + reason);
}

// What the program itself asks for, for all plates together, or the size of the samples to store if that is more.
void CheckRoom(const CRunPlan& plan, CFindings& findings) {
    constexpr std::uint64_t reserve = 50000000, perResult = 20000;
    const char* const answer = std::getenv("LANEWRIGHT_ANSWER");
    if (answer && std::string_view(answer) == "yes") return;
    std::uint64_t results = 0;
    for (const CPlannedPlate& plate : plan.plates)
        results +=
            plate.files.size() * plan.switches.Operations() * std::max<std::size_t>(plan.libraries.chosen.size(), 1);
    const std::uint64_t needed = reserve + std::max(results * perResult, BytesToStore(plan));
    constexpr std::uint64_t megabyte = 1000000;
    if (!plan.room && WhyNoFolder(plan.output).empty())
        findings.Add(plan.output, "the free space cannot be determined");
    else if (plan.room && *plan.room < needed)
        findings.Add(plan.output, "too little free space: " + std::to_string(*plan.room / megabyte) + " MB of " +
                                      std::to_string(needed / megabyte + 1) + " MB");
}

void CheckStoredAreOurs(const CRunPlan& plan, CFindings& findings) {
    for (const CBadResult& result : plan.foreign)
        findings.Add(result.path, result.reason);
}

void CheckStoredCanBeRead(const CRunPlan& plan, CFindings& findings) {
    for (const CBadResult& result : plan.unread)
        findings.Add(result.path, "the stored result cannot be read: " + result.reason);
}

void CheckStoredAreGood(const CRunPlan& plan, CFindings& findings) {
    if (plan.options.redoDamaged) return;
    for (const CBadResult& result : plan.damaged)
        findings.Add(result.path,
                     "the stored result is damaged: " + result.reason + " (--redo-damaged calls its sample again)");
}

}  // namespace lanetools
