#include "lanetools/samples/Summarize.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string_view>
#include <tuple>

#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

// A raw plate that has been read.
struct CReadPlate {
    const CRawPlate* plate;
    std::vector<CRawSample> samples;
    std::multimap<std::string, const CRawSample*> byStem;
    bool hasOutput = false;
};

std::vector<CReadPlate> ReadPlates(const std::vector<CRawPlate>& plates, CProgress& progress) {
    std::vector<CReadPlate> read;
    for (const CRawPlate& plate : plates) {
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

// True when the program may have named the output folder after the plate.
bool IsNamedAfter(std::string_view folder, std::string_view plate) {
    if (!folder.ends_with(outputSuffix)) return false;
    folder.remove_suffix(std::string_view(outputSuffix).size());
    return folder.size() > plate.size() && folder.starts_with(plate) && folder[plate.size()] == '_';
}

// A stored sample is compared by what it says of itself; a damaged one has its stem alone.
bool Matches(const CStoredSample& stored, const CRawSample& raw) {
    if (stored.stem != raw.stem) return false;
    const bool isKnown = stored.state != SampleState::Damaged && raw.reason.empty();
    return !isKnown || IsResultOf(stored.info, raw.info);
}

// How well the stored samples of a folder fit a plate.
struct CFit {
    std::size_t matches = 0;  // stored samples that are of one of its raw samples
    std::size_t certain = 0;  // those of them that say so themselves
    std::size_t length = 0;   // of the plate's name

    auto operator<=>(const CFit&) const = default;
};

CFit Fit(const CReadPlate& plate, const std::vector<CStoredSample>& stored) {
    CFit fit{0, 0, plate.plate->name.size()};
    for (const CStoredSample& sample : stored) {
        const auto [first, last] = plate.byStem.equal_range(sample.stem);
        if (std::none_of(first, last, [&](const auto& raw) { return Matches(sample, *raw.second); })) continue;
        ++fit.matches;
        if (sample.state != SampleState::Damaged) ++fit.certain;
    }
    return fit;
}

CReadPlate* PlateOf(const COutputFolder& folder, const std::vector<CStoredSample>& stored,
                    std::vector<CReadPlate>& plates) {
    CReadPlate* best = nullptr;
    CFit bestFit;
    const bool isAnyReadable = std::any_of(
        stored.begin(), stored.end(), [](const CStoredSample& sample) { return sample.state != SampleState::Damaged; });
    for (CReadPlate& plate : plates) {
        if (!IsNamedAfter(folder.name, plate.plate->name)) continue;
        const CFit fit = Fit(plate, stored);
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
    return row;
}

// The row of a raw sample with its result.
CSampleRow ResultRow(const CStoredSample& stored, const CRawSample& raw, const std::string& plateFolder) {
    CSampleRow row = MakeRow(stored, plateFolder);
    if (row.state == SampleState::Damaged && raw.reason.empty()) Identify(row, raw.info, plateFolder);
    if (row.state == SampleState::Called) row.rawPeak = RawPeak(raw.path);
    return row;
}

// The rows of an output folder and its plate.
void AddRows(const CReadPlate& plate, const std::vector<CStoredSample>& stored, std::vector<CSampleRow>& rows) {
    std::map<std::string_view, const CStoredSample*> byStem;
    for (const CStoredSample& sample : stored)
        byStem.emplace(sample.stem, &sample);
    std::set<std::string_view> used;
    for (const CRawSample& raw : plate.samples) {
        const auto found = byStem.find(raw.stem);
        if (found != byStem.end() && Matches(*found->second, raw)) {
            used.insert(found->first);
            rows.push_back(ResultRow(*found->second, raw, plate.plate->name));
            continue;
        }
        rows.push_back(MissingRow(raw, plate.plate->name));
        if (found != byStem.end() && rows.back().reason.empty())
            rows.back().reason = "The result of this name is of another sample";
    }
    for (const CStoredSample& sample : stored)
        if (!used.contains(sample.stem)) rows.push_back(MakeRow(sample, plate.plate->name));
}

std::vector<CStoredSample> ReadFolder(const COutputFolder& folder, CProgress& progress) {
    std::vector<CStoredSample> stored;
    for (const std::string& path : folder.files) {
        CheckInterrupt();
        stored.push_back(ReadStoredSample(path));
        progress.Step();
    }
    return stored;
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

    std::vector<CReadPlate> read = ReadPlates(plates, progress);
    std::vector<CSampleRow> rows;
    for (const COutputFolder& folder : outputs) {
        const bool isRawPlate = std::any_of(plates.begin(), plates.end(),
                                            [&](const CRawPlate& plate) { return plate.path == folder.path; });
        if (isRawPlate) continue;  // plates and their outputs may lie side by side
        const std::vector<CStoredSample> stored = ReadFolder(folder, progress);
        if (CReadPlate* plate = PlateOf(folder, stored, read)) {
            plate->hasOutput = true;
            AddRows(*plate, stored, rows);
        } else {
            for (const CStoredSample& sample : stored)
                rows.push_back(MakeRow(sample, PlateFolderOf(folder.name)));
        }
    }
    for (const CReadPlate& plate : read) {
        if (plate.hasOutput) continue;
        for (const CRawSample& raw : plate.samples)
            rows.push_back(MissingRow(raw, plate.plate->name));
    }
    Sort(rows);
    return rows;
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
