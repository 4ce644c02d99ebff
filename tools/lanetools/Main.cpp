// SPDX-License-Identifier: MIT
// lanetools: imports instrument files, runs the program over plates, sums up the results and exports them.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
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

// Passes the words after "--" to the subcommand if it takes them. Returns the number of words for the parser.
int HandOnRest(const std::vector<CSubcommand>& subcommands, int argc, char** argv) {
    for (const CSubcommand& subcommand : subcommands) {
        if (argc < 2 || !subcommand.takeRest || subcommand.app->get_name() != argv[1]) continue;
        const auto mark = std::find(argv, argv + argc, std::string_view("--"));
        if (mark != argv + argc) subcommand.takeRest({mark + 1, argv + argc});
        return static_cast<int>(mark - argv);
    }
    return argc;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App tools("Imports instrument files, calls plates safely, sums up the results and exports them.", "lanetools");
    tools.set_version_flag("--version", "lanetools " LANEWRIGHT_VERSION);
    tools.require_subcommand(1);
    tools.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("lanetools: ") + error.what() + "\nRun with --help for more information.\n";
    });
    tools.formatter(std::make_shared<commandline::CHelpFormatter>());
    std::vector<CSubcommand> subcommands{lanetools::AddImport(tools), lanetools::AddRun(tools),
                                         lanetools::AddSummary(tools), lanetools::AddExport(tools)};
#ifdef LANEWRIGHT_REPORT
    subcommands.push_back(lanetools::AddReport(tools));
#endif
    for (const CSubcommand& subcommand : subcommands)
        subcommand.app->set_version_flag("--version", "lanetools " LANEWRIGHT_VERSION);
    try {
        tools.parse(HandOnRest(subcommands, argc, argv), argv);
    } catch (const CLI::ParseError& error) {
        const bool isHelp = tools.exit(error, std::cout, std::cerr) == 0;
        return static_cast<int>(isHelp ? ExitCode::Done : ExitCode::Refused);
    }
    lanetools::WatchInterrupt();
    return static_cast<int>(RunChosen(subcommands));
}
