// SPDX-License-Identifier: MIT
// Adds options to a command line, group by group as the help shows them, and checks their values. The messages of the
// checks say what is allowed.
#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace samplegen {

// Accepts numbers from `low` to `high`. Unlike CLI::Range it refuses text that is not a number, such as "nan".
inline CLI::Validator Within(double low, double high) {
    return CLI::Validator(
        [=](const std::string& given) {
            double value = 0;
            const bool inside = CLI::detail::lexical_cast(given, value) && value >= low && value <= high;
            char range[64];
            std::snprintf(range, sizeof range, "%g to %g", low, high);
            return inside ? std::string() : given + " is not in the range " + range;
        },
        "");
}

// Accepts each of the names, of which there are at least two.
inline CLI::Validator OneOf(const std::vector<std::string>& names) {
    return CLI::Validator(
        [=](const std::string& given) {
            if (std::find(names.begin(), names.end(), given) != names.end()) return std::string();
            std::string text = given + " is neither " + names.front();
            for (std::size_t i = 1; i < names.size(); ++i)
                text += (i + 1 < names.size() ? ", " : " nor ") + names[i];
            return text;
        },
        "");
}

// Options under one heading of the help.
class COptionGroup {
  public:
    COptionGroup(CLI::App& theApp, const char* heading) : app(theApp), group(heading) {}

    // An option that sets `value`; `type` is the word that stands for the value in the help.
    template <class T>
    void Add(const char* names, T& value, const char* type, const CLI::Validator& check, const char* help) {
        app.add_option(names, value, help)->check(check)->type_name(type)->group(group);
    }
    // An option without a value, which sets `flag` to `state`.
    void AddFlag(const char* names, bool& flag, bool state, const char* help) {
        app.add_flag_callback(
               names, [&flag, state] { flag = state; }, help)
            ->disable_flag_override()
            ->group(group);
    }

  private:
    CLI::App& app;
    const char* group;
};

}  // namespace samplegen
