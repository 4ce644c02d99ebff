// SPDX-License-Identifier: MIT
// One conversation with the default base caller, as the program holds it, and what must be true of the answers to any
// read. Knows the library by its entry points alone; it must export all of them.
#pragma once

#include <lanewright/basecaller.h>
#include <algorithm>
#include <cmath>
#include <span>
#include <string>

#include "lanecall/HostileRead.h"
#include "platform/Library.h"

namespace lanecalltest {

// What a library reported about a read: either why there are no calls, or the calls.
struct Answer {
    std::string problem, letters;
    std::vector<float> positions, qualities;
    std::vector<double> heights;  // of the called letter's processed curve at each position
    std::int32_t firstGood = 0, lastGood = 0;
    float overall = 0, crossTalk = 0;  // of the matrix used, from channel 2 into channel 1
    bool operator==(const Answer&) const = default;
};

// The first promise that an answer broke.
struct Fault {
    std::string text;
};

inline void Demand(bool condition, const std::string& text) {
    if (!condition) throw Fault{text};
}

#define ENTRY(name) reinterpret_cast<decltype(name)*>(library.Symbol(#name))

// False for NaN.
inline bool IsFraction(float value) {
    return value >= 0 && value <= 1;
}

template <class Value>
bool AreFinite(const Value* values, std::size_t count) {
    return values && std::all_of(values, values + count, [](Value v) { return std::isfinite(v); });
}

struct ScanSpan {
    std::int32_t first = 0, end = 0;
    bool Holds(float scan) const { return scan >= static_cast<float>(first) && scan < static_cast<float>(end); }
    bool IsWithin(std::size_t scans) const { return 0 <= first && first <= end && end <= std::int64_t(scans); }
};

// Every value that is announced is looked at, so that a sanitizer sees an array that is too short.
inline void CheckAnnotation(const platform::Library& library, std::size_t scans) {
    std::int32_t *zones = nullptr, *values = nullptr, *gaps = nullptr, *places = nullptr;
    float *widths = nullptr, overall = 0, channels[4] = {};
    const std::int32_t zoneCount = ENTRY(ReportSignalToNoise)(0, &zones, &values);
    Demand(zoneCount >= 0 && zoneCount <= 32767 && (zoneCount == 0 || (zones && values)), "impossible zones");
    for (std::int32_t i = 0; i < zoneCount; ++i)
        Demand(ScanSpan{zones[2 * i], zones[2 * i + 1]}.IsWithin(scans), "zone outside the trace");
    for (std::int32_t i = 0; i < 8 * zoneCount; ++i)
        Demand(values[i] >= 0, "negative signal or noise");
    const std::int32_t spacings = ENTRY(ReportFWHMSpacing)(0, &widths, &gaps, &places);
    Demand(spacings >= 0 && spacings <= 32767 && (spacings == 0 || (widths && gaps && places)), "impossible spacings");
    for (std::int32_t i = 0; i < spacings; ++i)
        Demand(std::isfinite(widths[i]) && gaps[i] >= 0 && ScanSpan{places[i], places[i] + 1}.IsWithin(scans),
               "spacing of nowhere");
    ENTRY(ReportNumCurrFix)(0);
    ENTRY(ReportSpecSepDepth)(0);
    ENTRY(ReportSpecSepQual)(0, &overall, channels);
    Demand(std::isfinite(overall) && AreFinite(channels, 4), "separation quality not finite");
    ScanSpan signal;
    ENTRY(ReportTrueStartStopPoints)(0, &signal.first, &signal.end);
    Demand(signal.IsWithin(scans), "true start and stop outside the trace");
}

inline void CheckBase(const BaseRecord& base, const ScanSpan& processed, const std::string& order) {
    Demand(base.letter != '\0', "base without a letter");
    Demand(order.size() < 4 || base.letter == 'N' || order.find(base.letter) < 4, "letter of no channel");
    Demand(base.peakCount >= 1 && base.peakCount <= 256 && base.peaks, "base without usable peaks");
    for (const PeakRecord& peak : std::span(base.peaks, static_cast<std::size_t>(base.peakCount)))
        Demand(processed.Holds(peak.position), "peak outside the processed range");
    Demand(IsFraction(base.quality) && AreFinite(base.strengths, 4), "quality is no fraction or strength not finite");
}

// The reports that follow when every procedure went well.
inline void CheckReports(const platform::Library& library, const HostileRead& read, std::size_t scans, Answer& answer) {
    std::int32_t scratch = 0, count = 0;
    ScanSpan processed, signal;
    double** curves = ENTRY(PeekProcessedTrace)(0, &scratch, &processed.first, &processed.end);
    Demand(processed.IsWithin(scans), "processed range outside the trace");
    const auto length = static_cast<std::size_t>(processed.end - processed.first);
    for (std::size_t c = 0; c < 4 && length > 0; ++c)
        Demand(curves && curves[c] && AreFinite(curves[c] + processed.first, length), "curve missing or not finite");

    const BaseRecord* bases = ENTRY(ReportSequence)(0, &count, &answer.firstGood, &answer.lastGood, &answer.overall);
    Demand(count >= 0 && count <= 32767 && (count == 0 || bases), "impossible number of bases");
    for (std::int32_t i = 0; i < count; ++i) {
        CheckBase(bases[i], processed, read.order);
        const float position = bases[i].peaks[0].position;
        Demand(answer.positions.empty() || position >= answer.positions.back(), "bases out of order");
        const std::size_t channel = read.order.find(bases[i].letter);
        answer.heights.push_back(channel < 4 ? curves[channel][static_cast<std::size_t>(position)] : 0);
        answer.letters += bases[i].letter;
        answer.positions.push_back(position);
        answer.qualities.push_back(bases[i].quality);
    }
    Demand(answer.firstGood < 0 || (answer.lastGood >= answer.firstGood && answer.lastGood <= std::max(count - 1, 0)),
           "good region outside the list");
    Demand(IsFraction(answer.overall), "overall quality is no fraction");
    float** rows = ENTRY(ReportSpecSeparatnMatrixUsed)(0);
    for (std::size_t r = 0; rows && r < 4; ++r)
        Demand(AreFinite(rows[r], 4), "matrix not finite");
    if (rows) answer.crossTalk = rows[0][1];
    ENTRY(ReportSignalRangeForRawData)(0, &signal.first, &signal.end);
    Demand(signal.IsWithin(scans), "signal range outside the trace");
    if (read.annotate) CheckAnnotation(library, scans);
}

// Holds one conversation about `read`, which is used up.
inline Answer Converse(const platform::Library& library, HostileRead read) {
    Answer answer;
    const std::size_t scans = read.arrays[0].size();
    std::array<double*, 5> arrays{};
    std::array<float*, 4> rows{};
    std::transform(read.arrays.begin(), read.arrays.end(), arrays.begin(), [](auto& array) { return array.data(); });
    std::transform(read.matrix.begin(), read.matrix.end(), rows.begin(), [](auto& row) { return row.data(); });
    const std::int32_t procedures = ENTRY(GetNumOfProcedures)();
    if (read.annotate) ENTRY(SetIfAnnotate)(1);
    ENTRY(SetNumSamples)(1);
    ENTRY(SetRawData)(0, arrays.data(), 4, static_cast<std::int32_t>(scans), read.rate, read.order.c_str());
    if (read.range) ENTRY(SetSignalRange)(0, read.range->first, read.range->second);
    ENTRY(SetApproxiamtePeakWidth)(0, -1);
    ENTRY(SetSpecSepMatrix)(0, rows.data());
    std::int32_t done = 0;
    while (done < std::min(procedures, 6) && ENTRY(ExecuteProcedure)(0, done, 0) != 0)
        ++done;
    if (done < procedures) {
        const char* problem = ENTRY(ReportProblem)(0, nullptr, nullptr);
        Demand(problem && *problem, "failed without a reason");
        answer.problem = problem;
    } else {
        CheckReports(library, read, scans, answer);
    }
    read.arrays = {};  // the program's copy of the trace is gone before CleanUp
    ENTRY(CleanUp)();
    return answer;
}

#undef ENTRY

}  // namespace lanecalltest
