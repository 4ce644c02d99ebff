// SPDX-License-Identifier: MIT
#include "lanetools/samples/RawPlate.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

#include "discovery/SplitPath.h"
#include "lanetools/ExitCode.h"
#include "lanetools/samples/ListEntries.h"
#include "platform/Error.h"
#include "samplestore/RsdFile.h"
#include "samplestore/SampleFile.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

CRawPlate RawPlate(const fs::path& given, const fs::path& folder) {
    CRawPlate plate{folder.string(), folder.filename().string(), LastName(given), {}};
    std::error_code ignored;
    for (const fs::path& entry : ListEntries(folder))
        if (HasSampleExtension(entry.filename().string()) && !fs::is_directory(entry, ignored))
            plate.files.push_back(entry.string());
    return plate;
}

}  // namespace

std::vector<CRawPlate> FindRawPlates(const std::vector<std::string>& folders) {
    std::map<std::string, CRawPlate> found;
    const auto add = [&](const fs::path& given, const fs::path& folder) {
        CRawPlate plate = RawPlate(given, folder);
        const bool hasSamples = !plate.files.empty();
        if (hasSamples) found.emplace(plate.path, std::move(plate));
        return hasSamples;
    };
    for (const std::string& given : folders) {
        const fs::path folder = Resolve(given);
        bool hasSamples = add(given, folder);
        if (hasSamples) continue;
        std::error_code ignored;
        for (const fs::path& entry : ListEntries(folder))
            if (fs::is_directory(entry, ignored) && IsListable(entry)) hasSamples |= add(entry, Resolve(entry));
        if (!hasSamples) throw CRefused(given + ": it has no raw samples");
    }
    std::vector<CRawPlate> plates;
    for (auto& [path, plate] : found)
        plates.push_back(std::move(plate));
    return plates;
}

CRawSample ReadRawSample(const std::string& path, const std::string& plateName) {
    const std::string name = fs::path(path).filename().string();
    CRawSample raw{path, WithoutExtension(name), "", {}};
    CRsdFile file;
    platform::Error error = file.Open(path, true);
    if (!error) error = file.ReadInfo(raw.info);
    if (error) {
        raw.reason = "The raw file cannot be read: " + CRsdFile::Reason(error);
        raw.info = {};
        return raw;
    }
    if (raw.info.processed) raw.reason = "The raw file holds a processed sample";
    NameByFile(raw.info, name, plateName);
    raw.info.analysis = {};  // not used here, and large
    return raw;
}

bool IsResultOf(const CSampleInfo& stored, const CSampleInfo& raw) {
    return stored.runStart == raw.runStart && (raw.sampleName.empty() || stored.sampleName == raw.sampleName);
}

std::optional<std::int64_t> RawPeak(const std::string& path) {
    CRsdFile file;
    std::uint32_t count = 0;
    if (file.Open(path, true) || file.GetScanCount(count) || count == 0) return std::nullopt;
    std::vector<ScanRecord> scans(count);
    if (file.ReadScans(scans)) return std::nullopt;
    std::uint32_t peak = 0;
    for (const ScanRecord& scan : scans)
        peak = std::max(peak, *std::max_element(scan.words.begin() + 1, scan.words.end()));
    return peak;
}

}  // namespace lanetools
