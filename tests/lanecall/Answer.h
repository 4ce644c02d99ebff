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

// What a library said to a read: either why there are no calls, or the calls. `fault` names the first promise that an
// answer broke; the rest is then unknown.
struct Answer {
    std::string fault, problem, letters;
    std::vector<float> positions, qualities;
    bool operator==(const Answer&) const = default;
};

#define ENTRY(name) reinterpret_cast<decltype(name)*>(library.Symbol(#name))

inline bool IsFraction(float value) {
    return value >= 0 && value <= 1;  // false for NaN
}

struct ScanSpan {
    std::int32_t first = 0, end = 0;
    bool Holds(double scan) const { return scan >= first && scan < end; }
    bool IsWithin(std::size_t scans) const {
        return first >= 0 && first <= end && end <= static_cast<std::int64_t>(scans);
    }
};

inline std::string CurvesFault(const platform::Library& library, std::size_t scans, ScanSpan& processed) {
    std::int32_t scratch = 0;
    double** curves = ENTRY(PeekProcessedTrace)(0, &scratch, &processed.first, &processed.end);
    if (!processed.IsWithin(scans)) return "processed range outside the trace";
    for (std::size_t c = 0; c < 4 && processed.first < processed.end; ++c) {
        if (!curves || !curves[c]) return "processed curve missing";
        if (!std::all_of(curves[c] + processed.first, curves[c] + processed.end,
                         [](double v) { return std::isfinite(v); }))
            return "processed value not finite";
    }
    return "";
}

inline std::string BaseFault(const BaseRecord& base, const ScanSpan& processed, const std::string& order) {
    if (base.letter == '\0') return "base without a letter";
    if (order.size() >= 4 && base.letter != 'N' && order.find(base.letter) >= 4) return "letter of no channel";
    if (base.peakCount < 1 || base.peakCount > 256 || !base.peaks) return "base without usable peaks";
    for (const PeakRecord& peak : std::span(base.peaks, static_cast<std::size_t>(base.peakCount)))
        if (!processed.Holds(static_cast<double>(peak.position))) return "peak outside the processed range";
    if (!IsFraction(base.quality)) return "quality is no fraction";
    if (!std::all_of(base.strengths, base.strengths + 4, [](float v) { return std::isfinite(v); }))
        return "strength not finite";
    return "";
}

inline std::string SequenceFault(const platform::Library& library, const ScanSpan& processed, const std::string& order,
                                 Answer& answer) {
    std::int32_t count = 0, firstGood = 0, lastGood = 0;
    float overall = 0;
    const BaseRecord* bases = ENTRY(ReportSequence)(0, &count, &firstGood, &lastGood, &overall);
    if (count < 0 || count > 32767 || (count > 0 && !bases)) return "impossible number of bases";
    for (std::int32_t i = 0; i < count; ++i) {
        if (std::string fault = BaseFault(bases[i], processed, order); !fault.empty())
            return fault + " at base " + std::to_string(i);
        const float position = bases[i].peaks[0].position;
        if (!answer.positions.empty() && position < answer.positions.back()) return "bases out of order";
        answer.letters += bases[i].letter;
        answer.positions.push_back(position);
        answer.qualities.push_back(bases[i].quality);
    }
    if (firstGood >= 0 && (lastGood < firstGood || lastGood > std::max(count - 1, 0)))
        return "good region outside the list";
    return IsFraction(overall) ? "" : "overall quality is no fraction";
}

inline std::string MatrixFault(const platform::Library& library) {
    float** rows = ENTRY(ReportSpecSeparatnMatrixUsed)(0);
    for (std::size_t r = 0; rows && r < 4; ++r)
        if (!rows[r] || !std::all_of(rows[r], rows[r] + 4, [](float v) { return std::isfinite(v); }))
            return "matrix not finite";
    return "";
}

// Every value that is announced is looked at, so that a sanitizer sees an array that is too short.
inline std::string AnnotationFault(const platform::Library& library, std::size_t scans) {
    std::int32_t *zones = nullptr, *values = nullptr, *gaps = nullptr, *places = nullptr;
    float *widths = nullptr, overall = 0, channels[4] = {};
    const std::int32_t zoneCount = ENTRY(ReportSignalToNoise)(0, &zones, &values);
    if (zoneCount < 0 || zoneCount > 32767 || (zoneCount > 0 && (!zones || !values))) return "impossible zones";
    for (std::int32_t i = 0; i < zoneCount; ++i)
        if (!ScanSpan{zones[2 * i], zones[2 * i + 1]}.IsWithin(scans)) return "zone outside the trace";
    if (std::any_of(values, values + 8 * zoneCount, [](std::int32_t v) { return v < 0; }))
        return "negative signal or noise";
    const std::int32_t spacings = ENTRY(ReportFWHMSpacing)(0, &widths, &gaps, &places);
    if (spacings < 0 || spacings > 32767 || (spacings > 0 && (!widths || !gaps || !places)))
        return "impossible spacings";
    for (std::int32_t i = 0; i < spacings; ++i)
        if (!std::isfinite(widths[i]) || gaps[i] < 0 || !ScanSpan{0, static_cast<std::int32_t>(scans)}.Holds(places[i]))
            return "spacing of nowhere";
    ENTRY(ReportNumCurrFix)(0);
    ENTRY(ReportSpecSepDepth)(0);
    ENTRY(ReportSpecSepQual)(0, &overall, channels);
    if (!std::isfinite(overall) || !std::all_of(channels, channels + 4, [](float v) { return std::isfinite(v); }))
        return "separation quality not finite";
    ScanSpan signal;
    ENTRY(ReportTrueStartStopPoints)(0, &signal.first, &signal.end);
    return signal.IsWithin(scans) ? "" : "true start and stop outside the trace";
}

// The reports that follow when every procedure went well.
inline std::string ReportsFault(const platform::Library& library, const HostileRead& read, std::size_t scans,
                                Answer& answer) {
    ScanSpan processed, signal;
    std::string fault = CurvesFault(library, scans, processed);
    if (fault.empty()) fault = SequenceFault(library, processed, read.order, answer);
    if (fault.empty()) fault = MatrixFault(library);
    ENTRY(ReportSignalRangeForRawData)(0, &signal.first, &signal.end);
    if (fault.empty() && !signal.IsWithin(scans)) fault = "signal range outside the trace";
    if (fault.empty() && read.annotate) fault = AnnotationFault(library, scans);
    return fault;
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
        answer.problem = problem ? problem : "";
        if (answer.problem.empty()) answer.fault = "failed without a word";
    } else {
        answer.fault = ReportsFault(library, read, scans, answer);
    }
    read.arrays = {};  // the program's copy of the trace is gone before CleanUp
    ENTRY(CleanUp)();
    return answer;
}

#undef ENTRY

}  // namespace lanecalltest
