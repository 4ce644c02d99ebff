// SPDX-License-Identifier: MIT
#include "callsagree/Options.h"

#include "commandline/Help.h"

namespace callsagree {

namespace {

constexpr const char* about =
    "Compares called bases with the true ones, record by record and in total.\n"
    "\n"
    "TRUTH is a FASTA file such as samplegen writes. CALLS are FASTA files, and folders\n"
    "that are searched for .seq and .fasta files, with all subfolders. Two records belong\n"
    "together if their titles begin with the same file name, not counting folder and\n"
    "extension.";

constexpr const char* notes =
    "Columns of the table: true bases; called bases; true bases that the call covers;\n"
    "matches; substitutions; insertions (called without a true base); deletions (true bases\n"
    "that were not called); identity, which is the share of the matches in the sum of\n"
    "matches, substitutions, insertions and deletions. An N is a substitution. An ambiguity\n"
    "code in the truth, such as R for A or G, matches each of its letters and itself.\n"
    "\n"
    "At each end either the call or the truth may overhang without cost. So a call that\n"
    "starts late or ends early keeps its identity, but covers less.\n"
    "\n"
    "The exit code is 1 if a record of the truth was not called, if a total is below what\n"
    "was demanded, or if a file cannot be read; otherwise it is 0.\n"
    "\n"
    "Example:\n"
    "  calls-agree plate1/truth.fasta out/plate1_LC1_QX1 --at-least 99 --cover 95";

CLI::Validator Percent() {
    return CLI::Validator(
        [](const std::string& given) {
            double value = 0;
            const bool good = CLI::detail::lexical_cast(given, value) && value >= 0 && value <= 100;
            return good ? std::string() : given + " is no number from 0 to 100";
        },
        "");
}

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode) {
    Options options;
    CLI::App app(about, "calls-agree");
    app.footer(notes);
    app.add_option("truth", options.truth, "")->required()->type_name("TRUTH");
    app.add_option("calls", options.calls, "")->required()->type_name("CALLS");
    app.add_option("--at-least", options.identityAtLeast, "Least identity of the whole")
        ->check(Percent())
        ->type_name("PERCENT");
    app.add_option("--cover", options.coverageAtLeast, "Least share of all true bases that is to be covered")
        ->check(Percent())
        ->type_name("PERCENT");
    if (!commandline::Parse(app, argc, argv, exitCode)) return std::nullopt;
    return options;
}

}  // namespace callsagree
