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

COutputFolder OutputFolder(const fs::path& given, const fs::path& folder, const CEntries& entries) {
    std::map<std::string, std::string> files;  // by stem; ".esd" sorts before ".fsd"
    for (const fs::path& entry : entries.files)
        if (entry.extension() == ".esd" || entry.extension() == ".fsd")
            files.emplace(entry.stem().string(), entry.string());
    COutputFolder output{folder.string(), LastName(given), {}, entries.reason};
    for (auto& [stem, path] : files)
        output.files.push_back(std::move(path));
    return output;
}

bool IsNamedAsOutput(const fs::path& folder) {
    return std::string_view(folder.native()).ends_with(outputSuffix);
}

}  // namespace

std::vector<COutputFolder> ListOutputs(const std::vector<std::string>& roots, Unread& unread) {
    std::map<fs::path, COutputFolder> found;
    const auto add = [&](const fs::path& given, const fs::path& folder) {
        CEntries entries = ListEntries(folder, unread);
        COutputFolder output = OutputFolder(given, folder, entries);
        if (!output.files.empty() || IsNamedAsOutput(output.name)) found.emplace(folder, std::move(output));
        return entries.folders;
    };
    for (const std::string& root : roots) {
        for (const fs::path& entry : add(root, Resolve(root))) {
            std::error_code error;
            const fs::path folder = fs::canonical(entry, error);
            if (error)
                unread.push_back({entry.string(), error.message()});
            else
                add(entry, folder);
        }
    }
    std::vector<COutputFolder> outputs;
    for (auto& [path, output] : found)
        outputs.push_back(std::move(output));
    return outputs;
}

std::vector<COutputFolder> FindOutputs(const std::vector<std::string>& roots, Unread& unread) {
    std::vector<COutputFolder> outputs = ListOutputs(roots, unread);
    std::erase_if(outputs, [](const COutputFolder& output) { return output.files.empty(); });
    if (!outputs.empty()) return outputs;
    ShowUnread(unread);
    throw CRefused(roots.front() + ": it has no stored samples" + (unread.empty() ? "" : " that can be read"));
}

}  // namespace lanetools
