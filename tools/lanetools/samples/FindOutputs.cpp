#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

#include "lanetools/ExitCode.h"
#include "lanetools/samples/StoredSample.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

// The entries of a folder. Throws CRefused when it cannot be listed.
std::vector<fs::path> List(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        entries.push_back(at->path());
    if (error) throw CRefused(folder.string() + ": " + error.message());
    std::sort(entries.begin(), entries.end());
    return entries;
}

COutputFolder OutputFolder(const fs::path& folder, const std::vector<fs::path>& entries) {
    std::map<std::string, std::string> files;  // by stem; ".esd" sorts before ".fsd"
    for (const fs::path& entry : entries)
        if (entry.extension() == ".esd" || entry.extension() == ".fsd")
            files.emplace(entry.stem().string(), entry.string());
    COutputFolder output{folder.string(), folder.filename().string(), {}};
    for (auto& [stem, path] : files)
        output.files.push_back(std::move(path));
    return output;
}

}  // namespace

std::vector<COutputFolder> FindOutputs(const std::vector<std::string>& roots) {
    std::map<fs::path, COutputFolder> found;
    const auto add = [&](const fs::path& folder, const std::vector<fs::path>& entries) {
        COutputFolder output = OutputFolder(folder, entries);
        if (!output.files.empty()) found.emplace(folder, std::move(output));
    };
    for (const std::string& root : roots) {
        std::error_code error;
        const fs::path folder = fs::canonical(root, error);
        if (error) throw CRefused(root + ": " + error.message());
        const auto entries = List(folder);
        add(folder, entries);
        for (const fs::path& entry : entries)
            if (fs::is_directory(entry, error)) add(entry, List(entry));
    }
    if (found.empty()) throw CRefused(roots.front() + ": there is no stored sample in it");
    std::vector<COutputFolder> outputs;
    for (auto& [path, output] : found)
        outputs.push_back(std::move(output));
    return outputs;
}

}  // namespace lanetools
