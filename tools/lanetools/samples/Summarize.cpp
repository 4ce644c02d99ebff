// SPDX-License-Identifier: MIT
#include "lanetools/samples/Summarize.h"

#include <algorithm>
#include <compare>
#include <map>
#include <new>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "lanetools/samples/RawFigures.h"
#include "lanetools/samples/Remark.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/text/Utf8.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

namespace {

// A raw plate that has been read.
struct CReadPlate {
    const CRawPlate* plate;
    std::vector<CRawSample> samples;
    std::multimap<std::string, const CRawSample*> byStem;
    bool hasOutput = false;
};

bool IsNamedAfter(std::string_view folder, std::string_view plate) {
    if (!folder.ends_with(outputSuffix)) return false;
    folder.remove_suffix(std::string_view(outputSuffix).size());
    return folder.size() > plate.size() && folder.starts_with(plate) && folder[plate.size()] == '_';
}

// True if the program may have named the output folder after the plate.
bool IsNamedAfter(const COutputFolder& folder, const CRawPlate& plate) {
    return IsNamedAfter(folder.name, plate.name) || IsNamedAfter(folder.name, plate.givenName);
}

std::vector<CReadPlate> ReadPlates(const std::vector<CRawPlate>& plates, const std::vector<COutputFolder>& outputs,
                                   CProgress& progress) {
    std::vector<CReadPlate> read;
    for (const CRawPlate& plate : plates) {
        const bool mayHaveOutput = std::any_of(
            outputs.begin(), outputs.end(), [&](const COutputFolder& folder) { return IsNamedAfter(folder, plate); });
        if (!plate.isWanted && !mayHaveOutput) continue;
        CReadPlate& one = read.emplace_back(CReadPlate{&plate, {}, {}, false});
        for (const std::string& path : plate.files) {
            CheckInterrupt();
            one.samples.push_back(ReadRawSample(path, plate.name));
            progress.Step();
        }
        for (const CRawSample& sample : one.samples)
            one.byStem.emplace(sample.stem, &sample);
    }
    return read;
}

// A stored sample that has been read: its row, and of its description what says which sample it is.
struct CResult {
    CStoredSample stored;
    CSampleRow row;        // without the name of the plate's folder
    CCalledPlaces places;  // of a called sample
};

CResult ReadResult(const std::string& path) {
    CResult result;
    try {
        result.stored = ReadStoredSample(path);
        result.row = MakeRow(result.stored, "");
        if (result.stored.state == SampleState::Called) result.places = PlacesOf(result.stored.info);
    } catch (const std::bad_alloc&) {
        result.stored = UnreadSample(path, NoMemory());
        result.row = MakeRow(result.stored, "");
    }
    result.stored.info.analysis = {};  // large, and no longer needed
    return result;
}

std::vector<CResult> ReadFolder(const COutputFolder& folder, CProgress& progress) {
    std::vector<CResult> results;
    for (const std::string& path : folder.files) {
        CheckInterrupt();
        results.push_back(ReadResult(path));
        progress.Step();
    }
    return results;
}

// A stored sample is compared by what it says of itself; a damaged one has its stem alone.
bool Matches(const CStoredSample& stored, const CRawSample& raw) {
    if (stored.stem != raw.stem) return false;
    const bool isKnown = stored.state != SampleState::Damaged && raw.reason.empty();
    return !isKnown || IsResultOf(stored.info, raw.info);
}

// How well the stored samples of a folder fit a plate; what comes first counts most.
struct CFit {
    std::size_t certain = 0;  // stored samples whose description is that of one of its raw samples
    std::size_t matches = 0;  // those, and damaged ones with the stem of one
    std::size_t length = 0;   // of the plate's name

    auto operator<=>(const CFit&) const = default;
};

CFit Fit(const CReadPlate& plate, const std::vector<CResult>& results) {
    CFit fit{0, 0, plate.plate->name.size()};
    for (const CResult& result : results) {
        const auto [first, last] = plate.byStem.equal_range(result.stored.stem);
        if (std::none_of(first, last, [&](const auto& raw) { return Matches(result.stored, *raw.second); })) continue;
        ++fit.matches;
        if (result.stored.state != SampleState::Damaged) ++fit.certain;
    }
    return fit;
}

CReadPlate* PlateOf(const COutputFolder& folder, const std::vector<CResult>& results, std::vector<CReadPlate>& plates) {
    CReadPlate* best = nullptr;
    CFit bestFit;
    const bool isAnyReadable = std::any_of(results.begin(), results.end(), [](const CResult& result) {
        return result.stored.state != SampleState::Damaged;
    });
    for (CReadPlate& plate : plates) {
        if (!IsNamedAfter(folder, *plate.plate)) continue;
        const CFit fit = Fit(plate, results);
        if ((isAnyReadable && fit.certain == 0) || (best && fit <= bestFit)) continue;
        best = &plate;
        bestFit = fit;
    }
    return best;
}

CSampleRow MissingRow(const CRawSample& raw, const std::string& plateFolder) {
    CSampleRow row;
    Identify(row, raw.info, plateFolder);
    row.file = ToUtf8(raw.stem);
    row.reason = raw.reason;
    row.rawPath = raw.path;
    row.unread = raw.unread;
    return row;
}

CSampleRow ResultRow(const CResult& result, const std::string& plateFolder) {
    CSampleRow row = result.row;
    if (row.plate.empty()) row.plate = ToUtf8(plateFolder);
    return row;
}

void AddRawFigures(CSampleRow& row, const CCalledPlaces& places, const std::string& rawPath) {
    const std::vector<ScanRecord> scans = ReadScans(rawPath, row.unread);
    row.rawPeak = RawPeak(scans);
    const CRawFigures figures = MeasureRaw(places, scans);
    if (!row.signal) row.signal = OneDecimal(figures.signal);
    if (!row.noise) row.noise = OneDecimal(figures.noise);
    row.remark = RemarkOn(places, figures);
}

// The row of a raw sample with its result.
CSampleRow ResultRow(const CResult& result, const CRawSample& raw, const std::string& plateFolder) {
    CSampleRow row = ResultRow(result, plateFolder);
    if (row.state == SampleState::Damaged && raw.reason.empty()) Identify(row, raw.info, plateFolder);
    if (row.state == SampleState::Called && raw.unread.empty()) AddRawFigures(row, result.places, raw.path);
    row.unread.insert(row.unread.end(), raw.unread.begin(), raw.unread.end());
    row.rawPath = raw.path;
    return row;
}

// The rows of an output folder and its plate.
void AddRows(const CReadPlate& plate, const COutputFolder& output, const std::vector<CResult>& results,
             std::vector<CSampleRow>& rows) {
    const std::string& folder = plate.plate->name;
    std::map<std::string_view, const CResult*> byStem;
    for (const CResult& result : results)
        byStem.emplace(result.stored.stem, &result);
    std::set<std::string_view> used;
    for (const CRawSample& raw : plate.samples) {
        CheckInterrupt();
        const auto found = byStem.find(raw.stem);
        if (found != byStem.end() && Matches(found->second->stored, raw)) {
            used.insert(found->first);
            rows.push_back(ResultRow(*found->second, raw, folder));
            continue;
        }
        rows.push_back(MissingRow(raw, folder));
        if (!rows.back().reason.empty()) continue;
        if (found != byStem.end())
            rows.back().reason = "The result with this name is of another sample";
        else if (!output.reason.empty())
            rows.back().reason = "The folder of the results cannot be listed: " + output.reason;
    }
    for (const CResult& result : results)
        if (!used.contains(result.stored.stem)) rows.push_back(ResultRow(result, folder));
}

void Sort(std::vector<CSampleRow>& rows) {
    const auto key = [](const CSampleRow& row) {
        return std::tie(row.plate, row.well, row.file, row.caller, row.path);
    };
    std::stable_sort(rows.begin(), rows.end(),
                     [&](const CSampleRow& a, const CSampleRow& b) { return key(a) < key(b); });
}

}  // namespace

std::vector<CSampleRow> Summarize(const std::vector<COutputFolder>& outputs, const std::vector<CRawPlate>& plates) {
    std::size_t files = 0;
    for (const CRawPlate& plate : plates)
        files += plate.files.size();
    for (const COutputFolder& folder : outputs)
        files += folder.files.size();
    CProgress progress("samples", files);

    std::vector<CReadPlate> read = ReadPlates(plates, outputs, progress);
    std::vector<CSampleRow> rows;
    for (const COutputFolder& folder : outputs) {
        const bool isRawPlate = std::any_of(plates.begin(), plates.end(),
                                            [&](const CRawPlate& plate) { return plate.path == folder.path; });
        if (isRawPlate) continue;  // plates and their outputs may lie side by side
        const std::vector<CResult> results = ReadFolder(folder, progress);
        const std::size_t first = rows.size();
        if (CReadPlate* plate = PlateOf(folder, results, read)) {
            plate->hasOutput = true;
            AddRows(*plate, folder, results, rows);
        } else {
            for (const CResult& result : results)
                rows.push_back(ResultRow(result, PlateFolderOf(folder.name)));
        }
        for (CSampleRow& row : std::span(rows).subspan(first))
            row.outputFolder = folder.path;
    }
    for (const CReadPlate& plate : read) {
        if (plate.hasOutput || !plate.plate->isWanted) continue;
        for (const CRawSample& raw : plate.samples)
            rows.push_back(MissingRow(raw, plate.plate->name));
    }
    Sort(rows);
    return rows;
}

Unread UnreadOf(const std::vector<CSampleRow>& rows) {
    Unread unread;
    for (const CSampleRow& row : rows)
        unread.insert(unread.end(), row.unread.begin(), row.unread.end());
    return unread;
}

void CStateCounts::Add(SampleState state) {
    switch (state) {
        case SampleState::Called:
            ++called;
            break;
        case SampleState::Failed:
            ++failed;
            break;
        case SampleState::Missing:
            ++missing;
            break;
        case SampleState::Damaged:
            ++damaged;
            break;
    }
}

CStateCounts CountStates(const std::vector<CSampleRow>& rows) {
    CStateCounts counts;
    for (const CSampleRow& row : rows)
        counts.Add(row.state);
    return counts;
}

}  // namespace lanetools
