// SPDX-License-Identifier: MIT
#include "lanetools/CommonOptions.h"

#include <functional>
#include <optional>
#include <string>

namespace lanetools {

namespace {

std::string CheckNotEmpty(const std::string& path) {
    return path.empty() ? "the path is empty" : "";
}

std::string CheckPlain(const std::string& path) {
    return path.find('\\') == std::string::npos ? CheckNotEmpty(path) : path + ": a path must not contain \"\\\"";
}

std::string CheckPercent(const std::string& text) {
    double percent = -1;
    const bool isNumber = CLI::detail::lexical_cast(text, percent);
    return isNumber && percent >= 0 && percent <= 100 ? "" : text + " is not a number from 0 to 100";
}

std::string CheckRatio(const std::string& text) {
    double ratio = 0;
    const bool isNumber = CLI::detail::lexical_cast(text, ratio);
    return isNumber && ratio > 0 && ratio <= 1 ? "" : text + " is not a ratio above 0 and up to 1";
}

}  // namespace

CLI::Validator NotEmpty() {
    return {CheckNotEmpty, ""};
}

CLI::Validator PlainPath() {
    return {CheckPlain, ""};
}

void AddMinPass(CLI::App& app, double& percent) {
    app.add_option("--min-pass", percent, "Percentage of called samples that gives exit code 0")
        ->check(CLI::Validator(CheckPercent, ""))
        ->type_name("PERCENT")
        ->capture_default_str();
}

CLI::Option* AddMixedRatio(CLI::App& app, const std::string& name, std::optional<double>& ratio,
                           const std::string& description) {
    return app.add_option(name, ratio, description)->check(CLI::Validator(CheckRatio, ""))->type_name("RATIO");
}

}  // namespace lanetools
