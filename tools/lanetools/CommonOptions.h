// SPDX-License-Identifier: MIT
// Options that several subcommands have, and checks of their values. A value that does not pass ends the program before
// anything is done.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace lanetools {

// For paths: refuses an empty one, which would mean the working folder to some functions and nothing to others.
CLI::Validator NotEmpty();
// For paths of samples and exported files: also refuses "\", which the sample store takes for a separator.
CLI::Validator PlainPath();

// Adds "--min-pass PERCENT": the percentage of called samples, 0 to 100, that gives exit code 0.
void AddMinPass(CLI::App& app, double& percent);

// Adds an option "SWITCH RATIO": the least strength of a second letter relative to the strongest, above 0, 1 at most.
CLI::Option* AddMixedRatio(CLI::App& app, const std::string& name, std::optional<double>& ratio,
                           const std::string& description);

}  // namespace lanetools
