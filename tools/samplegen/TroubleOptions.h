// The options that make reads hard to call.
#pragma once

#include <CLI/CLI.hpp>

#include "samplegen/Options.h"

namespace samplegen {

void AddTroubleOptions(CLI::App& app, Options& options);

// Refuses, by CLI::ValidationError, what does not go together, and settles what follows from what else was given. To be
// called when all options are known.
void CheckTroubles(const CLI::App& app, Options& options);

}  // namespace samplegen
