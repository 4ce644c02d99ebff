// SPDX-License-Identifier: MIT
// What Main knows about the subcommands. The function of each is defined in its own folder.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "lanetools/ExitCode.h"

namespace lanetools {

struct CSubcommand {
    CLI::App* app;                  // owned by the App it was added to; parsed() is true if it was chosen
    std::function<ExitCode()> run;  // carries it out, after the command line has been parsed; owns the options
    // Takes the words after "--" of a subcommand that passes them on. Empty if such words are ordinary arguments.
    std::function<void(std::vector<std::string>)> takeRest = {};
    // Lines of advice after an error of the command line whose words these are; may be empty.
    std::function<std::string(const std::vector<std::string>&)> advise = {};
};

// Each adds its subcommand, with switches and help, to `tools`.
CSubcommand AddImport(CLI::App& tools);
CSubcommand AddRun(CLI::App& tools);
CSubcommand AddSummary(CLI::App& tools);
CSubcommand AddExport(CLI::App& tools);
CSubcommand AddMixed(CLI::App& tools);
CSubcommand AddReport(CLI::App& tools);

}  // namespace lanetools
