// SPDX-License-Identifier: MIT
#include "lanetools/report/SampleCurves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "lanetools/report/Packed.h"
#include "lanetools/samples/Phred.h"
#include "lanetools/samples/RawPlate.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t rawStep = 2;

using Curves = std::array<std::vector<float>, channelCount>;

Curves ProcessedCurves(std::span<const ScanRecord> scans) {
    Curves curves;
    for (std::size_t k = 0; k < channelCount; ++k) {
        curves[k].reserve(scans.size());
        for (const ScanRecord& scan : scans)
            curves[k].push_back(scan.Float(static_cast<int>(k) + 1));
    }
    return curves;
}

float HighestAt(const Curves& curves, std::size_t scan) {
    float highest = 0;
    for (const auto& curve : curves)
        if (curve[scan] > highest) highest = curve[scan];
    return highest;
}

// `room` times the value that only 2 % of `values` exceed, but not above the highest of them. A dye blob or a spike is
// cut there, so that it does not press the read flat.
float UsualTop(std::vector<float> values, float room) {
    if (values.empty()) return 0;
    const float highest = *std::max_element(values.begin(), values.end());
    const auto usual = values.begin() + static_cast<std::ptrdiff_t>((values.size() - 1) * 98 / 100);
    std::nth_element(values.begin(), usual, values.end());
    return *usual > 0 ? std::min(highest, *usual * room) : highest;
}

// The value that fills the height: above nearly all peaks.
float TraceTop(const Curves& curves, std::span<const std::int32_t> positions, std::int32_t start) {
    const std::size_t scans = curves[0].size();
    std::vector<float> peaks;
    for (const std::int32_t position : positions) {
        const std::int64_t scan = std::int64_t{position} - start;
        if (scan >= 0 && scan < static_cast<std::int64_t>(scans))
            peaks.push_back(HighestAt(curves, static_cast<std::size_t>(scan)));
    }
    if (!peaks.empty()) return UsualTop(std::move(peaks), 1.5f);
    float highest = 0;
    for (std::size_t scan = 0; scan < scans; ++scan)
        highest = std::max(highest, HighestAt(curves, scan));
    return highest;
}

// Of one word of raw scans.
float Mean(std::span<const ScanRecord> scans, std::size_t word) {
    float sum = 0;
    for (const ScanRecord& scan : scans)
        sum += static_cast<float>(scan.words[word]);
    return sum / static_cast<float>(scans.size());
}

// The lowest bytes of all positions, then the next ones, and so on: most of them are 0.
void AppendPositions(std::vector<std::uint8_t>& bytes, std::span<const std::int32_t> positions, std::int32_t start) {
    for (int shift = 0; shift < 32; shift += 8) {
        std::int64_t before = start;
        for (const std::int32_t position : positions) {
            bytes.push_back(static_cast<std::uint8_t>((position - before) >> shift));
            before = position;
        }
    }
}

}  // namespace

Json PackTrace(const CStoredSample& sample, Unread& unread) {
    const auto scans = ReadScans(sample.path, unread);
    if (scans.empty()) return nullptr;
    const CAnalysisInfo& analysis = sample.info.analysis;
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(analysis.basesCalled, 0));
    const auto positions = std::span(analysis.peakPositions).first(count);
    const Curves curves = ProcessedCurves(scans);
    const float top = TraceTop(curves, positions, analysis.startTrace);

    std::vector<std::uint8_t> bytes;
    bytes.reserve(scans.size() * channelCount + count * 6);
    for (const auto& curve : curves)
        AppendCurve(bytes, curve, top);
    bytes.insert(bytes.end(), analysis.sequence.begin(),
                 analysis.sequence.begin() + static_cast<std::ptrdiff_t>(count));
    for (std::size_t i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(std::lround(Phred(analysis.qualityScores[i]))));
    AppendPositions(bytes, positions, analysis.startTrace);
    return {{"start", analysis.startTrace}, {"scans", scans.size()}, {"bases", count}, {"data", Packed(bytes)}};
}

Json PackRaw(const std::string& path, Unread& unread) {
    const auto scans = ReadScans(path, unread);
    if (scans.empty()) return nullptr;
    Curves curves;
    std::vector<float> current, highest;
    for (std::size_t first = 0; first < scans.size(); first += rawStep) {
        const auto together = std::span(scans).subspan(first, std::min(rawStep, scans.size() - first));
        current.push_back(Mean(together, 0));
        for (std::size_t k = 0; k < channelCount; ++k)
            curves[k].push_back(Mean(together, k + 1));
        highest.push_back(HighestAt(curves, current.size() - 1));
    }
    const float top = UsualTop(highest, 2);
    const float currentTop = *std::max_element(current.begin(), current.end());
    std::vector<std::uint8_t> bytes;
    for (const auto& curve : curves)
        AppendCurve(bytes, curve, top);
    AppendCurve(bytes, current, currentTop);
    return {{"values", current.size()},
            {"step", rawStep},
            {"top", top},
            {"highest", *std::max_element(highest.begin(), highest.end())},
            {"current_top", currentTop},
            {"data", Packed(bytes)}};
}

}  // namespace lanetools
