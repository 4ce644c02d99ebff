// SPDX-License-Identifier: MIT
// "lanetools run": the guarded way to call the program.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "commandline/Help.h"
#include "lanetools/CommonOptions.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/run/Findings.h"
#include "lanetools/run/RunPlan.h"
#include "lanetools/run/RunPlates.h"
#include "lanetools/run/RunReport.h"
#include "lanetools/run/SetAside.h"
#include "lanetools/run/ShellQuote.h"
#include "lanetools/samples/Summarize.h"
#include "lanetools/text/StandardOutput.h"
#include "platform/Ascii.h"
#include "run/Switches.h"

namespace lanetools {

namespace {

constexpr const char* about =
    "Runs the program over plates, with checks before and after.\n"
    "\n"
    "Looks for mistakes first, starts the program once per plate, and reports how many\n"
    "samples were called, and why the others were not. A library that crashes costs only\n"
    "the sample that it was working on.";

constexpr const char* notes =
    "SWITCHES are those of the program, such as -BC lanecall.so -ABD; -BC is added if it is\n"
    "missing. Input and output are given to lanetools itself.\n"
    "\n"
    "Exit codes: 0 all called, or as many as --min-pass asks for; 1 the program could not be\n"
    "run; 2 refused, and nothing was written; 3 samples are missing, failed or damaged;\n"
    "130 after Ctrl-C. The same command goes on where it was stopped.\n"
    "\n"
    "Example:\n"
    "  lanetools run plates/* -o out -j 4 --timeout 60 -- -BC -ABD -FA";

void AddOptions(CLI::App& app, CRunOptions& options) {
    app.add_option("PLATES", options.plates, "Folders of raw samples")
        ->required()
        ->check(NotEmpty())
        ->type_name("PLATES");
    app.add_option("-o,--output", options.output, "Folder for the results; created if its parent exists")
        ->required()
        ->check(NotEmpty())
        ->type_name("OUT");
    app.add_option("-j,--jobs", options.jobs, "Plates at a time, 1 to 1000")
        ->check(CLI::Range(1, 1000).description(""))
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--timeout", options.timeout, "A sample without progress for so long is lost")
        ->check(CLI::Range(1, 1000000).description(""))
        ->type_name("SECONDS");
    AddMinPass(app, options.minPass);
    app.add_flag("--dry-run", options.isDry, "Check, and print the commands instead of running them");
    app.add_flag("--redo-damaged", options.redoDamaged,
                 "Call samples with a damaged result again, which is kept until a new one is stored");
}

// Prints how damaged results are set aside, then the first command of each plate.
void PrintCommands(const CRunPlan& plan) {
    std::string text;
    for (const CBadResult& result : plan.damaged)
        text += ShellQuoted({"mv", "--", result.path, SetAsidePath(result.path)}) + '\n';
    for (const CPlannedPlate& plate : plan.plates)
        text += ShellQuoted(FirstCommand(plan, plate)) + '\n';
    WriteStandardOutput(text);
}

// For a command line with switches of the program among its own words.
std::string AdviseOnSwitches(const std::vector<std::string>& words) {
    const auto end = std::find(words.begin(), words.end(), "--");
    const auto found = std::find_if(words.begin(), end, [](const std::string& word) {
        return FindSwitch(platform::UpperAscii(word)) != nullptr && word != "-h";
    });
    if (found == end) return "";
    return *found + " is a switch of the program, and these follow \"--\": lanetools run PLATES... -o OUT -- " +
           *found + "\n";
}

ExitCode Run(const CRunOptions& options) {
    const CRunPlan plan = MakeRunPlan(options);
    const std::vector<std::string> findings = FindAll(plan);
    for (const std::string& line : findings)
        std::fprintf(stderr, "lanetools: %s\n", line.c_str());
    if (!findings.empty()) return ExitCode::Refused;
    if (options.isDry) {
        PrintCommands(plan);
        return ExitCode::Done;
    }
    CSetAside damaged(plan);
    const CRunOutcome outcome = RunPlates(plan);
    damaged.Settle();
    if (!outcome.hasWorked) throw std::runtime_error("the program did not begin any sample");
    const bool isPassed = ReportPlates(plan, outcome.losses).Passes(options.minPass);
    return isPassed && !outcome.isIncomplete ? ExitCode::Done : ExitCode::Incomplete;
}

}  // namespace

CSubcommand AddRun(CLI::App& tools) {
    CLI::App* app = tools.add_subcommand("run", about);
    app->footer(notes);
    app->formatter(std::make_shared<commandline::CHelpFormatter>(" [-- SWITCHES]"));
    const auto options = std::make_shared<CRunOptions>();
    options->jobs = std::max(1u, std::thread::hardware_concurrency());
    AddOptions(*app, *options);
    return {app, [options] { return Run(*options); },
            [options](std::vector<std::string> words) { options->words = std::move(words); }, AdviseOnSwitches};
}

}  // namespace lanetools
