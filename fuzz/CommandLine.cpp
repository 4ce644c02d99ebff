// SPDX-License-Identifier: MIT
// Parses a command line; each line of the input is a word. Separators and colons are replaced, so that no path leads
// out of the target's folder.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "Fuzz.h"
#include "discovery/SplitPath.h"
#include "run/CommandLine.h"
#include "run/Switches.h"
#include "support/TempFolder.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isPrepared = [] {
        for (const char* name : {"plate1/a.rsd", "plate1/B.esd", "plate2/inner/c.rsd", "d.rsd"})
            fuzz::Folder().Write(name, "");
        std::filesystem::current_path(fuzz::Folder().Path());
        return true;
    }();
    fuzz::Demand(isPrepared);
    std::string text(fuzz::Text(data, size));
    for (std::string path = text; !path.empty();)
        SplitPath(path);

    std::vector<const char*> words{"program"};
    bool isStart = true;
    for (char& c : text) {
        if (c == '/' || c == '\\' || c == ':') c = '-';
        if (c == '\n') c = '\0';
        if (isStart) words.push_back(&c);
        isStart = c == '\0';
    }
    const CCommandLine line(static_cast<int>(words.size()), words.data(), SwitchNames(), {{"*.esd"}, {"*.rsd"}});
    std::size_t taken = 0;
    for (const CParsedSwitch& given : line.switches)
        taken += 1 + given.parameters.size();
    fuzz::Demand(taken < words.size() && line.switches.size() <= words.size());
    return 0;
}
