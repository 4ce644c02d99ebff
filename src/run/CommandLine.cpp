// SPDX-License-Identifier: MIT
#include "run/CommandLine.h"

#include <algorithm>
#include <utility>

#include "platform/Ascii.h"
#include "run/Switches.h"

CCommandLine::CCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames,
                           const std::vector<CFileTypeFilter>& patterns)
    : CCommandLine(argc, argv, switchNames) {
    ExpandInputs(patterns);
}

CCommandLine::CCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames)
    : knownNames(InputSwitchNames()) {
    knownNames.insert(knownNames.end(), switchNames.begin(), switchNames.end());
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        std::string name = platform::UpperAscii(word);
        if (std::find(knownNames.begin(), knownNames.end(), name) != knownNames.end())
            switches.push_back({std::move(name), {}});
        else
            (switches.empty() ? dropped : switches.back().parameters).push_back(word);
    }
}
