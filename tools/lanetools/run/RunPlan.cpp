// SPDX-License-Identifier: MIT
#include "lanetools/run/RunPlan.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "discovery/FileTypeFilter.h"
#include "discovery/FolderScan.h"
#include "discovery/SplitPath.h"
#include "lanetools/ExitCode.h"
#include "lanetools/run/Mistakes.h"
#include "lanetools/run/StoredResults.h"
#include "lanetools/system/Access.h"
#include "platform/Error.h"
#include "platform/Files.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

// Enough for a library that reads its own tables on a busy machine.
constexpr std::chrono::seconds longestLoad{20};

std::string FindProgram() {
    const std::string path = platform::PathNextToProgram("lanewright");
    if (!IsProgram(path)) throw CRefused(path + ": the program does not exist or cannot be started");
    return path;
}

std::string WithoutEndSeparators(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

CPlannedPlate FindPlate(const std::string& given) {
    std::error_code error;
    const fs::path path = fs::canonical(given, error);
    if (error) return {given, given, LastComponent(WithoutEndSeparators(given)), error.message(), {}};
    CPlannedPlate plate{given, path.string(), path.filename().string(), {}, {}};
    if (!fs::is_directory(path, error)) plate.problem = "it is not a folder";
    // With these the program would look for another path; that is a finding of its own.
    if (!plate.problem.empty() || plate.path.find_first_of("*\\") != std::string::npos) return plate;
    const CFolderScan scan(plate.path, {{"*.esd"}, {"*.rsd"}}, false);
    if (!scan.unlisted.empty()) plate.problem = scan.unlisted.front().error.Text();
    for (const std::string& file : scan.files)
        plate.files.push_back(file.substr(plate.path.size() + 1));  // a name may contain the separator
    plate.mistake = FindMistake(plate);
    return plate;
}

// The folder need not exist yet.
std::string CleanOutput(const std::string& given) {
    const fs::path path = WithoutEndSeparators(given);
    std::error_code error;
    const fs::path existing = fs::canonical(path, error);
    if (!error) return existing.string();
    const fs::path parent = fs::canonical(path.has_parent_path() ? path.parent_path() : ".", error);
    if (!error && path.filename() != "..") return (parent / path.filename()).string();
    return fs::absolute(path).lexically_normal().string();
}

std::optional<std::uint64_t> FindRoom(const std::string& output) {
    std::error_code error;
    const fs::path path = output;
    return platform::FreeBytes((fs::exists(path, error) ? path : path.parent_path()).string());
}

std::vector<CPlannedOutput> PlanOutputs(const CRunPlan& plan) {
    std::vector<CPlannedOutput> outputs;
    const auto& chosen = plan.libraries.chosen;
    for (std::size_t i = 0; i < plan.plates.size(); ++i)
        for (std::size_t k = 0; k < chosen.size(); ++k) {
            if (!chosen[k].index || !plan.libraries.known[*chosen[k].index].isLoaded) continue;
            const std::string& suffix = plan.libraries.known[*chosen[k].index].suffix;
            outputs.push_back({i, k, plan.output + '/' + plan.plates[i].name + suffix});
        }
    return outputs;
}

std::vector<std::string> Command(const CRunPlan& plan, const char* inputSwitch, const std::vector<std::string>& inputs,
                                 const std::vector<std::string>& switches) {
    std::vector<std::string> words{plan.program, inputSwitch};
    words.insert(words.end(), inputs.begin(), inputs.end());
    words.insert(words.end(), {"-OD", plan.output});
    words.insert(words.end(), switches.begin(), switches.end());
    return words;
}

}  // namespace

CRunPlan MakeRunPlan(CRunOptions options) {
    CRunPlan plan{.options = std::move(options),
                  .program = FindProgram(),
                  .switches = CSwitchWords({}),
                  .plates = {},
                  .output = {},
                  .room = {},
                  .libraries = {},
                  .outputs = {},
                  .damaged = {},
                  .foreign = {}};
    plan.switches = CSwitchWords(plan.options.words);
    for (const std::string& given : plan.options.plates)
        plan.plates.push_back(FindPlate(given));
    plan.output = CleanOutput(plan.options.output);
    plan.room = FindRoom(plan.output);
    plan.libraries = FindLibraries(plan.switches, longestLoad);
    plan.outputs = PlanOutputs(plan);
    LookAtStoredResults(plan);
    return plan;
}

std::vector<std::string> FirstCommand(const CRunPlan& plan, const CPlannedPlate& plate) {
    return Command(plan, "-IP", {plate.path}, plan.switches.Words());
}

std::vector<std::string> FurtherCommand(const CRunPlan& plan, const CPlannedPlate& plate,
                                        const std::vector<std::string>& files,
                                        const std::vector<std::string>& libraries) {
    const std::vector<std::string> switches = plan.switches.WordsToGoOn(libraries);
    if (files.empty()) return Command(plan, "-IP", {plate.path}, switches);
    // The separator is the one that the program puts between a plate and its samples, which shows in its texts.
    std::vector<std::string> paths;
    for (const std::string& file : files)
        paths.push_back(plate.path + '\\' + file);
    return Command(plan, "-IF", paths, switches);
}

}  // namespace lanetools
