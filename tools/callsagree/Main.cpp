// SPDX-License-Identifier: MIT
// calls-agree: compares called bases with the true ones. See docs/tools.md.
#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "callsagree/Alignment.h"
#include "callsagree/Fasta.h"
#include "callsagree/Options.h"
#include "callsagree/Report.h"

namespace {

// Whether the calls are good enough; prints the reasons if not.
bool Passes(const callsagree::Comparison& comparison, const callsagree::Options& options) {
    const double identity = comparison.total.Identity();
    const double coverage = comparison.total.Coverage();
    if (!comparison.missing.empty())
        std::fprintf(stderr, "calls-agree: %zu records of the truth were not called\n", comparison.missing.size());
    if (identity < options.identityAtLeast)
        std::fprintf(stderr, "calls-agree: identity of %.4f %%, below %g %%\n", identity, options.identityAtLeast);
    if (coverage < options.coverageAtLeast)
        std::fprintf(stderr, "calls-agree: %.4f %% of the truth covered, below %g %%\n", coverage,
                     options.coverageAtLeast);
    return comparison.missing.empty() && identity >= options.identityAtLeast && coverage >= options.coverageAtLeast;
}

}  // namespace

int main(int argc, char** argv) {
    int exitCode = 0;
    const auto options = callsagree::ParseOptions(argc, argv, exitCode);
    if (!options) return exitCode;
    try {
        const auto truth = callsagree::ReadFasta(options->truth);
        if (truth.empty()) throw std::runtime_error("no records in " + options->truth);
        const auto comparison = callsagree::Compare(truth, callsagree::ReadCalls(options->calls, options->truth));
        std::fputs(callsagree::Table(comparison).c_str(), stdout);
        return Passes(comparison, *options) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "calls-agree: %s\n", error.what());
        return 1;
    }
}
