// What Main knows of the subcommands. Each has a folder of its own, which defines its function here.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "lanetools/ExitCode.h"

namespace lanetools {

struct CSubcommand {
    CLI::App* app;                  // owned by the App it was added to; parsed() says whether it was chosen
    std::function<ExitCode()> run;  // carries it out, after the command line has been parsed; owns the options
    // Takes the words after "--", for a subcommand that hands them on; empty where they are arguments like others.
    std::function<void(std::vector<std::string>)> takeRest = {};
};

// Each adds its subcommand, with switches and help, to `tools`.
CSubcommand AddImport(CLI::App& tools);
CSubcommand AddRun(CLI::App& tools);
CSubcommand AddSummary(CLI::App& tools);
CSubcommand AddExport(CLI::App& tools);
CSubcommand AddReport(CLI::App& tools);

}  // namespace lanetools
