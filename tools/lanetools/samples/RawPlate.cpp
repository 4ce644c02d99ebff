// SPDX-License-Identifier: MIT
#include "lanetools/samples/RawPlate.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <new>
#include <system_error>
#include <utility>

#include "discovery/SplitPath.h"
#include "lanetools/ExitCode.h"
#include "lanetools/samples/ListEntries.h"
#include "lanetools/samples/OpenSample.h"
#include "platform/Error.h"
#include "samplestore/RsdFile.h"
#include "samplestore/SampleFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

CRawPlate RawPlate(const fs::path& given, const fs::path& folder, const CEntries& entries) {
    CRawPlate plate{folder.string(), folder.filename().string(), LastName(given), {}, true};
    for (const fs::path& entry : entries.files)
        if (HasSampleExtension(entry.filename().string())) plate.files.push_back(entry.string());
    return plate;
}

void Read(CRawSample& raw, const std::string& name, const std::string& plateName) {
    CRsdFile file;
    std::string reason = OpenSample(file, raw.path);
    bool isOfSystem = !reason.empty();
    if (!isOfSystem) {
        if (const auto error = file.ReadInfo(raw.info)) {
            reason = CRsdFile::Reason(error);
            isOfSystem = IsOfSystem(error);
        }
    }
    if (!reason.empty()) {
        if (isOfSystem) raw.unread = {{raw.path, reason}};
        raw.reason = "The raw file cannot be read: " + reason;
        raw.info = {};
        return;
    }
    if (raw.info.processed) raw.reason = "The raw file holds a processed sample";
    NameByFile(raw.info, name, plateName);
    raw.info.analysis = {};  // not used here, and large
}

}  // namespace

std::vector<CRawPlate> FindRawPlates(const std::vector<std::string>& folders, Unread& unread) {
    std::map<std::string, CRawPlate> found;
    const auto add = [&](const fs::path& given, const fs::path& folder, const CEntries& entries, bool isNamed) {
        CRawPlate plate = RawPlate(given, folder, entries);
        plate.isWanted = isNamed;
        const bool hasSamples = !plate.files.empty();
        if (hasSamples) found.emplace(plate.path, std::move(plate)).first->second.isWanted |= isNamed;
        return hasSamples;
    };
    for (const std::string& given : folders) {
        const std::size_t before = unread.size();
        const fs::path folder = Resolve(given);
        const CEntries entries = ListEntries(folder, unread);
        bool hasSamples = add(given, folder, entries, true);
        if (hasSamples) continue;
        for (const fs::path& entry : entries.folders) {
            std::error_code error;
            const fs::path plate = fs::canonical(entry, error);
            if (error)
                unread.push_back({entry.string(), error.message()});
            else
                hasSamples |= add(entry, plate, ListEntries(plate, unread), false);
        }
        if (!hasSamples && unread.size() == before) throw CRefused(given + ": it has no raw samples");
    }
    if (found.empty() && !folders.empty()) {
        ShowUnread(unread);
        throw CRefused(folders.front() + ": it has no raw samples that can be read");
    }
    std::vector<CRawPlate> plates;
    for (auto& [path, plate] : found)
        plates.push_back(std::move(plate));
    return plates;
}

CRawSample ReadRawSample(const std::string& path, const std::string& plateName) {
    const std::string name = fs::path(path).filename().string();
    CRawSample raw{path, WithoutExtension(name), "", {}, {}};
    try {
        Read(raw, name, plateName);
    } catch (const std::bad_alloc&) {
        raw.info = {};
        raw.reason = "The raw file cannot be read: " + NoMemory();
        raw.unread = {{path, NoMemory()}};
    }
    return raw;
}

bool IsResultOf(const CSampleInfo& stored, const CSampleInfo& raw) {
    return stored.runStart == raw.runStart && (raw.sampleName.empty() || stored.sampleName == raw.sampleName);
}

std::vector<ScanRecord> ReadScans(const std::string& path, Unread& unread) {
    CRsdFile file;
    std::uint32_t count = 0;
    std::string reason;
    std::vector<ScanRecord> scans;
    try {
        reason = OpenSample(file, path);
        platform::Error error;
        if (reason.empty()) error = file.GetScanCount(count);
        if (reason.empty() && !error) {
            scans.resize(count);
            error = file.ReadScans(scans);
        }
        if (error) reason = CRsdFile::Reason(error);
    } catch (const std::bad_alloc&) {
        reason = NoMemory();
    }
    if (reason.empty()) return scans;
    unread.push_back({path, reason});
    return {};
}

std::optional<std::int64_t> RawPeak(const std::vector<ScanRecord>& scans) {
    if (scans.empty()) return std::nullopt;
    std::uint32_t peak = 0;
    for (const ScanRecord& scan : scans)
        peak = std::max(peak, *std::max_element(scan.words.begin() + 1, scan.words.end()));
    return peak;
}

}  // namespace lanetools
