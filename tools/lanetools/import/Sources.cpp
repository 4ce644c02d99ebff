// SPDX-License-Identifier: MIT
#include "lanetools/import/Sources.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "lanetools/ExitCode.h"
#include "lanetools/import/AbifDirectory.h"
#include "lanetools/import/Unpack.h"
#include "lanetools/system/Interrupt.h"
#include "platform/Ascii.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestFile = std::uintmax_t{64} << 20;  // a run takes a third of a megabyte

bool HasExtension(const fs::path& path, std::string_view extension) {
    return platform::EqualIgnoringCase(path.extension().string(), extension);
}

// The name of a source without ".gz".
fs::path PlainName(const fs::path& path) {
    return HasExtension(path, ".gz") ? path.stem() : path.filename();
}

bool IsSourceName(const fs::path& path) {
    return HasExtension(PlainName(path), ".ab1") || HasExtension(PlainName(path), ".abi");
}

CSource MakeSource(const fs::path& path) {
    CSource source{path.string(), PlainName(path).stem().string(), {}, {}, {}};
    std::error_code error;
    source.folder = fs::absolute(path, error).lexically_normal().parent_path().filename().string();
    if (HasExtension(PlainName(path), ".fsa")) source.refusal = "a fragment analysis (.fsa), not a sequencing run";
    return source;
}

// The source files and the folders that are directly in a folder, by name.
struct CListing {
    std::vector<fs::path> files, folders;
    std::error_code error;  // if it cannot be listed to its end
};

CListing List(const fs::path& folder) {
    CListing listing;
    for (fs::directory_iterator at(folder, listing.error), end; !listing.error && at != end;
         at.increment(listing.error)) {
        std::error_code ignored;
        const fs::path path = folder / at->path().filename();
        if (at->is_directory(ignored))  // known from the listing, also of a folder that may not be looked at
            listing.folders.push_back(path);
        else if (IsSourceName(path))
            listing.files.push_back(path);
    }
    std::sort(listing.files.begin(), listing.files.end());
    std::sort(listing.folders.begin(), listing.folders.end());
    return listing;
}

void AddFiles(const CListing& listing, std::vector<CSource>& sources) {
    std::transform(listing.files.begin(), listing.files.end(), std::back_inserter(sources), MakeSource);
}

// Adds the sources in the folders of `listing` and below; `entered` has the folders that were listed before.
void AddBelow(const CListing& listing, std::set<fs::path>& entered, std::vector<CSource>& sources) {
    for (const fs::path& folder : listing.folders) {
        CheckInterrupt();
        std::error_code error;
        if (const fs::path real = fs::canonical(folder, error); !error && !entered.insert(real).second) continue;
        const CListing below = List(folder);
        if (below.error) sources.push_back({folder.string(), {}, {}, below.error.message(), {}});
        AddFiles(below, sources);
        AddBelow(below, entered, sources);
    }
}

std::string WhyEmpty(const CListing& listing, bool isRecursive) {
    if (isRecursive) return "no .ab1 or .abi file in this folder or below it";
    const bool isDeeper = std::any_of(listing.folders.begin(), listing.folders.end(),
                                      [](const fs::path& folder) { return !List(folder).files.empty(); });
    return std::string("no .ab1 or .abi file in this folder") +
           (isDeeper ? ", but one folder deeper: import --recursive" : "");
}

std::vector<CSource> SourcesOf(const std::string& folder, bool isRecursive) {
    const CListing listing = List(folder);
    if (listing.error) throw CRefused(folder + ": " + listing.error.message());
    std::vector<CSource> sources;
    AddFiles(listing, sources);
    if (isRecursive) {
        std::error_code ignored;
        std::set<fs::path> entered{fs::canonical(folder, ignored)};
        AddBelow(listing, entered, sources);
    }
    if (sources.empty()) sources.push_back({folder, {}, {}, WhyEmpty(listing, isRecursive), {}});
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

std::vector<CSource> FindSources(const std::vector<std::string>& arguments, bool isRecursive) {
    std::vector<CSource> sources;
    for (const std::string& argument : arguments) {
        std::error_code error;
        const fs::file_status status = fs::status(argument, error);
        if (!fs::exists(status)) throw CRefused(argument + ": " + error.message());
        std::vector<CSource> found =
            fs::is_directory(status) ? SourcesOf(argument, isRecursive) : std::vector<CSource>{MakeSource(argument)};
        std::move(found.begin(), found.end(), std::back_inserter(sources));
    }
    const bool isAnyFound =
        std::any_of(sources.begin(), sources.end(), [](const CSource& source) { return !source.stem.empty(); });
    if (!isAnyFound) throw CRefused(sources.front().path + ": " + sources.front().refusal);
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
    return IsPacked(bytes) ? Unpack(bytes, largestFile) : bytes;
}

}  // namespace lanetools
