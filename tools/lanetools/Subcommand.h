// What Main knows of the subcommands. Each has a folder of its own, which defines its function here.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "lanetools/ExitCode.h"

namespace lanetools {

struct CSubcommand {
    CLI::App* app;                  // owned by the App it was added to; parsed() says whether it was chosen
    std::function<ExitCode()> run;  // carries it out, after the command line has been parsed; owns the options
};

// Each adds its subcommand, with switches and help, to `tools`.
CSubcommand AddImport(CLI::App& tools);
CSubcommand AddRun(CLI::App& tools);
CSubcommand AddSummary(CLI::App& tools);
CSubcommand AddExport(CLI::App& tools);

}  // namespace lanetools
