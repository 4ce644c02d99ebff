// SPDX-License-Identifier: MIT
#include "lanetools/import/Sources.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

#include "lanetools/ExitCode.h"
#include "lanetools/import/AbifDirectory.h"
#include "platform/Ascii.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestFile = std::uintmax_t{64} << 20;  // a run takes a third of a megabyte

bool HasExtension(const fs::path& path, std::string_view extension) {
    return platform::EqualIgnoringCase(path.extension().string(), extension);
}

CSource MakeSource(const fs::path& path) {
    CSource source{path.string(), path.stem().string(), {}, {}, {}};
    std::error_code error;
    source.folder = fs::absolute(path, error).lexically_normal().parent_path().filename().string();
    if (HasExtension(path, ".fsa")) source.refusal = "a fragment analysis (.fsa), not a sequencing run";
    return source;
}

std::vector<CSource> ListFolder(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> names;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const fs::path name = at->path().filename();
        std::error_code ignored;
        if ((HasExtension(name, ".ab1") || HasExtension(name, ".abi")) && !fs::is_directory(at->path(), ignored))
            names.push_back(name);
    }
    if (error) throw CRefused(folder.string() + ": " + error.message());
    std::sort(names.begin(), names.end());
    std::vector<CSource> sources;
    sources.reserve(names.size());
    for (const fs::path& name : names)
        sources.push_back(MakeSource(folder / name));
    return sources;
}

// Notes in each source which earlier one is the same file.
void FindRepeats(std::vector<CSource>& sources) {
    std::map<fs::path, std::size_t> first;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        std::error_code error;
        const fs::path path = fs::canonical(sources[i].path, error);
        const auto [place, isNew] = first.try_emplace(error ? fs::path(sources[i].path) : path, i);
        if (!isNew) sources[i].sameAs = place->second;
    }
}

}  // namespace

std::vector<CSource> FindSources(const std::vector<std::string>& arguments) {
    std::vector<CSource> sources;
    bool isAnyFound = false;
    for (const std::string& argument : arguments) {
        std::error_code error;
        const fs::file_status status = fs::status(argument, error);
        if (!fs::exists(status)) throw CRefused(argument + ": " + error.message());
        std::vector<CSource> found =
            fs::is_directory(status) ? ListFolder(argument) : std::vector<CSource>{MakeSource(argument)};
        isAnyFound = isAnyFound || !found.empty();
        if (found.empty()) found.push_back({argument, {}, {}, "no .ab1 or .abi file in this folder", {}});
        std::move(found.begin(), found.end(), std::back_inserter(sources));
    }
    if (!isAnyFound) throw CRefused(arguments.front() + ": it has no .ab1 or .abi file");
    FindRepeats(sources);
    return sources;
}

std::string ReadSource(const std::string& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) throw CUnusable(error ? error.message() : "it is not a regular file");
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) throw CUnusable(error.message());
    if (size > largestFile) throw CUnusable("too large for a run: more than 64 MiB");
    std::ifstream in(path, std::ios::binary);
    if (!in) throw CUnusable(std::generic_category().message(errno));
    std::string bytes(size, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(size));
    if (in.bad()) throw CUnusable("it cannot be read to its end");
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return bytes;
}

}  // namespace lanetools
