// SPDX-License-Identifier: MIT
// The options for troubles, which make reads hard to call.
#pragma once

#include <CLI/CLI.hpp>

#include "samplegen/Options.h"

namespace samplegen {

void AddTroubleOptions(CLI::App& app, Options& options);

// Throws CLI::ValidationError for options that contradict each other, and sets the number of bases of a hard plate. To
// be called after the command line has been read.
void CheckTroubles(const CLI::App& app, Options& options);

}  // namespace samplegen
