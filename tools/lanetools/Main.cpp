// SPDX-License-Identifier: MIT
// lanetools: imports instrument files, runs the program over plates, sums up the results and exports them.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "commandline/Help.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/LastResort.h"

namespace {

using lanetools::CSubcommand;
using lanetools::ExitCode;

constexpr const char* outputLost = "standard output cannot be written";
constexpr const char* versionText = "lanetools " LANEWRIGHT_VERSION;

// The exit code of a command that has ended with `code`, after its sentence: `reason`, or null if it needs none. After
// a signal its errors may only be calls that were cut short, and what it believes to be done may lack something; the
// same is true of a lack of memory that was swallowed on its way.
ExitCode EndOf(ExitCode code, const char* reason) {
    if (lanetools::IsInterrupted()) {
        reason = "interrupted";
        code = ExitCode::Interrupted;
    } else if (lanetools::WasShortOfMemory() && (code == ExitCode::Done || code == ExitCode::Refused)) {
        reason = lanetools::noMemory;
        code = ExitCode::Failed;
    }
    if (reason != nullptr) std::fprintf(stderr, "lanetools: %s\n", reason);
    return code;
}

// Calls `work`, and reports an exception that leaves it.
template <class Work>
ExitCode Guarded(Work work) {
    try {
        return EndOf(work(), nullptr);
    } catch (const lanetools::CRefused& refused) {
        return EndOf(ExitCode::Refused, refused.what());
    } catch (const std::bad_alloc&) {
        return EndOf(ExitCode::Failed, lanetools::noMemory);
    } catch (const std::exception& error) {
        return EndOf(ExitCode::Failed, error.what());
    }
}

const CSubcommand* FindNamed(const std::vector<CSubcommand>& subcommands, int argc, char** argv) {
    const auto found = std::find_if(subcommands.begin(), subcommands.end(),
                                    [&](const CSubcommand& one) { return argc > 1 && one.app->get_name() == argv[1]; });
    return found == subcommands.end() ? nullptr : &*found;
}

std::string UnknownText(const std::vector<CSubcommand>& subcommands, const std::string& word) {
    std::string text = word + ": there is no such subcommand; there are";
    for (const CSubcommand& subcommand : subcommands)
        text += (&subcommand == &subcommands.front() ? " " : ", ") + subcommand.app->get_name();
    return text;
}

// Passes the words after "--" to the subcommand if it takes them. Returns the number of words for the parser.
int HandOnRest(const CSubcommand* chosen, int argc, char** argv) {
    if (!chosen || !chosen->takeRest) return argc;
    const auto mark = std::find(argv, argv + argc, std::string_view("--"));
    if (mark != argv + argc) chosen->takeRest({mark + 1, argv + argc});
    return static_cast<int>(mark - argv);
}

std::vector<CSubcommand> AddSubcommands(CLI::App& tools) {
    std::vector<CSubcommand> subcommands{lanetools::AddImport(tools), lanetools::AddRun(tools),
                                         lanetools::AddSummary(tools), lanetools::AddExport(tools),
                                         lanetools::AddMixed(tools)};
#ifdef LANEWRIGHT_REPORT
    subcommands.push_back(lanetools::AddReport(tools));
#endif
    for (const CSubcommand& subcommand : subcommands)
        subcommand.app->set_version_flag("--version", versionText);
    return subcommands;
}

// Prints the help or the version that was asked for, or what is wrong with the command line.
ExitCode Explain(const CLI::App& tools, const CLI::ParseError& error, const std::string& advice) {
    if (tools.exit(error, std::cout, std::cerr) != 0) {
        std::cerr << advice << std::flush;
        return ExitCode::Refused;
    }
    if (!std::cout.flush()) throw std::runtime_error(outputLost);
    return ExitCode::Done;
}

ExitCode ParseAndRun(int argc, char** argv) {
    CLI::App tools("Imports instrument files, calls plates safely, sums up the results and exports them.", "lanetools");
    tools.set_version_flag("--version", versionText);
    tools.require_subcommand(1);
    tools.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("lanetools: ") + error.what() + "\nRun with --help for more information.\n";
    });
    tools.formatter(std::make_shared<commandline::CHelpFormatter>());
    const std::vector<CSubcommand> subcommands = AddSubcommands(tools);
    const CSubcommand* const chosen = FindNamed(subcommands, argc, argv);
    if (!chosen && argc > 1 && argv[1][0] != '-') throw lanetools::CRefused(UnknownText(subcommands, argv[1]));
    try {
        tools.parse(HandOnRest(chosen, argc, argv), argv);
    } catch (const CLI::ParseError& error) {
        const bool hasAdvice = chosen && chosen->advise;
        return Explain(tools, error, hasAdvice ? chosen->advise({argv + 2, argv + argc}) : "");
    }
    if (!chosen) throw lanetools::CRefused("the name of a subcommand must be the first word");
    lanetools::WatchInterrupt();
    const ExitCode code = chosen->run();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) throw std::runtime_error(outputLost);
    return code;
}

// Comes before the static objects, which allocate memory too.
[[gnu::constructor(101)]] void Prepare() {
    lanetools::PrepareLastResort();
}

}  // namespace

int main(int argc, char** argv) {
    const auto code = static_cast<int>(Guarded([&] { return ParseAndRun(argc, argv); }));
    // Not to wait again for someone who does not read.
    if (lanetools::IsInterrupted()) std::_Exit(code);
    return code;
}
