// SPDX-License-Identifier: MIT
// Options that several subcommands have, and checks of their values. A value that does not pass ends the program before
// anything is done.
#pragma once

#include <CLI/CLI.hpp>

namespace lanetools {

// For paths: refuses an empty one, which would mean the working folder to some functions and nothing to others.
CLI::Validator NotEmpty();
// For paths of samples and exported files: also refuses "\", which the sample store takes for a separator.
CLI::Validator PlainPath();

// Adds "--min-pass PERCENT": the percentage of called samples, 0 to 100, that gives exit code 0.
void AddMinPass(CLI::App& app, double& percent);

}  // namespace lanetools
