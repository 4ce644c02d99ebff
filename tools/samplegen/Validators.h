// Checks of what is given to an option, whose messages say what is allowed.
#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>
#include <vector>

namespace samplegen {

// Also refuses what is no number, which a plain range lets pass.
inline CLI::Validator Within(double low, double high, const std::string& text) {
    return CLI::Validator(
        [=](const std::string& given) {
            double value = 0;
            const bool inside = CLI::detail::lexical_cast(given, value) && value >= low && value <= high;
            return inside ? std::string() : given + " is not in the range " + text;
        },
        "");
}

// Two names or more.
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

}  // namespace samplegen
