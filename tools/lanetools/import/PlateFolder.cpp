// SPDX-License-Identifier: MIT
#include "lanetools/import/PlateFolder.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "lanetools/samples/Well.h"
#include "lanetools/text/SafeName.h"
#include "samplestore/RsdFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr const char* extensions[] = {".rsd", ".esd"};  // the program reads either as a sample of this stem

// Name `number` of those that `head` + `tail` may get, for files with an extension of `reserved` bytes.
std::string NumberedName(const std::string& head, const std::string& tail, int number, std::size_t reserved) {
    const std::string end = number == 1 ? tail : tail + '-' + std::to_string(number);
    const std::size_t room = longestName - reserved - std::min(longestName - reserved, end.size());
    return head.substr(0, room) + end;
}

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));  // also a link to nothing
}

// True, with its description in `stored`, if the file at `path` holds this sample.
bool IsSameSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans,
                  CSampleInfo& stored) {
    CRsdFile file;
    std::uint32_t count = 0;
    if (file.Open(path, true) || file.ReadInfo(stored) || file.GetScanCount(count)) return false;
    if (stored.processed || stored.runStart != info.runStart || stored.sampleName != info.sampleName ||
        count != scans.size())
        return false;
    std::vector<ScanRecord> records(count);
    if (file.ReadScans(records)) return false;
    return std::equal(records.begin(), records.end(), scans.begin(),
                      [](const ScanRecord& a, const ScanRecord& b) { return a.words == b.words; });
}

// What is known from the samples of a folder.
struct CFolderState {
    bool isUsable = true;  // it does not exist, or is a folder that can be listed and holds no other plate
    bool isLarge = false;
};

CFolderState LookAt(const fs::path& folder, const std::string& plateId) {
    CFolderState state;
    if (!Exists(folder)) return state;
    bool holdsOwn = false, holdsOther = false;
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
        const fs::path& entry = at->path();
        if (entry.extension() != extensions[0] && entry.extension() != extensions[1]) continue;
        CRsdFile file;
        CSampleInfo info;
        if (file.Open(entry.string(), true) || file.ReadInfo(info)) continue;
        (info.plateId == plateId ? holdsOwn : holdsOther) = true;
        state.isLarge = state.isLarge || IsBeyond96(info.wellId);
    }
    state.isUsable = !error && (holdsOwn || !holdsOther);
    return state;
}

}  // namespace

CPlateFolder::CPlateFolder(const fs::path& root, const std::string& plateId, std::set<std::string>& taken) {
    for (int number = 1;; ++number) {
        const std::string name = NumberedName(SafeName(plateId), "", number, 0);
        isPlainTaken = number > 1;
        path = (root / name).string();
        if (taken.contains(name)) continue;
        const CFolderState state = LookAt(path, plateId);
        if (!state.isUsable) continue;
        isLarge = state.isLarge;
        taken.insert(name);
        return;
    }
}

void CPlateFolder::AddWell(const std::string& well) {
    isLarge = isLarge || IsBeyond96(well);
}

CPlace CPlateFolder::Place(const std::string& head, const std::string& tail, const CSampleInfo& info,
                           std::span<const ScanRecord> scans) const {
    constexpr std::size_t extensionSize = 4;
    for (int number = 1;; ++number) {
        const std::string file = path + '/' + NumberedName(head, tail, number, extensionSize);
        if (Exists(file + extensions[1])) continue;
        const CPlace place{file + extensions[0], number > 1, false, {}};
        if (!Exists(place.path)) return place;
        CSampleInfo stored;
        if (IsSameSample(place.path, info, scans, stored))
            return {place.path, place.isPlainTaken, true, stored.sourceFile};
    }
}

}  // namespace lanetools
