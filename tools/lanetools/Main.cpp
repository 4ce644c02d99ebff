// lanetools: brings instrument files in, runs the program over plates, sums up and exports what it stored.
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <vector>

#include "commandline/Help.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/system/Interrupt.h"

namespace {

using lanetools::CSubcommand;
using lanetools::ExitCode;

ExitCode RunChosen(const std::vector<CSubcommand>& subcommands) {
    for (const CSubcommand& subcommand : subcommands) {
        if (!subcommand.app->parsed()) continue;
        try {
            return subcommand.run();
        } catch (const lanetools::CInterrupted&) {
            std::fprintf(stderr, "lanetools: interrupted\n");
            return ExitCode::Interrupted;
        } catch (const lanetools::CRefused& refused) {
            std::fprintf(stderr, "lanetools: %s\n", refused.what());
            return ExitCode::Refused;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "lanetools: %s\n", error.what());
            return ExitCode::Failed;
        }
    }
    return ExitCode::Refused;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App tools("Brings instrument files in, calls plates safely, sums up the results and exports them.",
                   "lanetools");
    tools.set_version_flag("--version", "lanetools " LANEWRIGHT_VERSION);
    tools.require_subcommand(1);
    tools.formatter(std::make_shared<commandline::CHelpFormatter>());
    const std::vector<CSubcommand> subcommands{lanetools::AddImport(tools), lanetools::AddRun(tools),
                                               lanetools::AddSummary(tools), lanetools::AddExport(tools)};
    for (const CSubcommand& subcommand : subcommands)
        subcommand.app->set_version_flag("--version", "lanetools " LANEWRIGHT_VERSION);
    try {
        tools.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isHelp = tools.exit(error, std::cout, std::cerr) == 0;
        return static_cast<int>(isHelp ? ExitCode::Done : ExitCode::Refused);
    }
    lanetools::WatchInterrupt();
    return static_cast<int>(RunChosen(subcommands));
}
