// SPDX-License-Identifier: MIT
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "lanetools/ExitCode.h"
#include "lanetools/samples/ListEntries.h"
#include "lanetools/samples/StoredSample.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

COutputFolder OutputFolder(const fs::path& given, const fs::path& folder) {
    std::map<std::string, std::string> files;  // by stem; ".esd" sorts before ".fsd"
    std::error_code ignored;
    for (const fs::path& entry : ListEntries(folder))
        if ((entry.extension() == ".esd" || entry.extension() == ".fsd") && !fs::is_directory(entry, ignored))
            files.emplace(entry.stem().string(), entry.string());
    COutputFolder output{folder.string(), LastName(given), {}};
    for (auto& [stem, path] : files)
        output.files.push_back(std::move(path));
    return output;
}

bool IsNamedAsOutput(const fs::path& folder) {
    return std::string_view(folder.native()).ends_with(outputSuffix);
}

}  // namespace

std::vector<COutputFolder> ListOutputs(const std::vector<std::string>& roots) {
    std::map<fs::path, COutputFolder> found;
    const auto add = [&](const fs::path& given, const fs::path& folder) {
        COutputFolder output = OutputFolder(given, folder);
        if (!output.files.empty() || IsNamedAsOutput(output.name)) found.emplace(folder, std::move(output));
    };
    for (const std::string& root : roots) {
        const fs::path folder = Resolve(root);
        add(root, folder);
        std::error_code ignored;
        // Other folders are ignored, also if they cannot be listed.
        for (const fs::path& entry : ListEntries(folder))
            if (fs::is_directory(entry, ignored) && (IsNamedAsOutput(entry) || IsListable(entry)))
                add(entry, Resolve(entry));
    }
    std::vector<COutputFolder> outputs;
    for (auto& [path, output] : found)
        outputs.push_back(std::move(output));
    return outputs;
}

std::vector<COutputFolder> FindOutputs(const std::vector<std::string>& roots) {
    std::vector<COutputFolder> outputs = ListOutputs(roots);
    std::erase_if(outputs, [](const COutputFolder& output) { return output.files.empty(); });
    if (outputs.empty()) throw CRefused(roots.front() + ": it has no stored samples");
    return outputs;
}

}  // namespace lanetools
