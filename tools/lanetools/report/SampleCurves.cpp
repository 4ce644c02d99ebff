#include "lanetools/report/SampleCurves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "lanetools/report/Packed.h"
#include "lanetools/samples/Phred.h"
#include "samplestore/RsdFile.h"

namespace lanetools {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t rawStep = 2;

std::optional<std::vector<ScanRecord>> ReadScans(const std::string& path) {
    CRsdFile file;
    std::uint32_t count = 0;
    if (file.Open(path, true) || file.GetScanCount(count)) return std::nullopt;
    std::vector<ScanRecord> scans(count);
    if (count == 0 || file.ReadScans(scans)) return std::nullopt;
    return scans;
}

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

// The value that fills the height: above nearly all peaks. A dye blob or a spike above it is cut, and does not press
// the read flat.
float Top(const Curves& curves, std::span<const std::int32_t> positions, std::int32_t start) {
    const std::size_t scans = curves[0].size();
    float highest = 0;
    for (std::size_t scan = 0; scan < scans; ++scan)
        highest = std::max(highest, HighestAt(curves, scan));
    std::vector<float> peaks;
    for (const std::int32_t position : positions) {
        const std::int64_t scan = std::int64_t{position} - start;
        if (scan >= 0 && scan < static_cast<std::int64_t>(scans))
            peaks.push_back(HighestAt(curves, static_cast<std::size_t>(scan)));
    }
    if (peaks.empty()) return highest;
    const auto high = peaks.begin() + static_cast<std::ptrdiff_t>((peaks.size() - 1) * 98 / 100);
    std::nth_element(peaks.begin(), high, peaks.end());
    constexpr float room = 1.5f;
    return *high > 0 ? std::min(highest, *high * room) : highest;
}

void AppendPosition(std::vector<std::uint8_t>& bytes, std::int64_t difference) {
    const auto word = static_cast<std::uint32_t>(difference);
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(word >> shift));
}

}  // namespace

Json PackTrace(const CStoredSample& sample) {
    const auto scans = ReadScans(sample.path);
    if (!scans) return nullptr;
    const CAnalysisInfo& analysis = sample.info.analysis;
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(analysis.basesCalled, 0));
    const auto positions = std::span(analysis.peakPositions).first(count);
    const Curves curves = ProcessedCurves(*scans);
    const float top = Top(curves, positions, analysis.startTrace);

    std::vector<std::uint8_t> bytes;
    bytes.reserve(scans->size() * channelCount + count * 6);
    for (const auto& curve : curves)
        AppendCurve(bytes, curve, top);
    bytes.insert(bytes.end(), analysis.sequence.begin(),
                 analysis.sequence.begin() + static_cast<std::ptrdiff_t>(count));
    for (std::size_t i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(std::lround(Phred(analysis.qualityScores[i]))));
    std::int64_t before = analysis.startTrace;
    for (const std::int32_t position : positions) {
        AppendPosition(bytes, position - before);
        before = position;
    }
    return {{"start", analysis.startTrace}, {"scans", scans->size()}, {"bases", count}, {"data", Packed(bytes)}};
}

Json PackRaw(const std::string& path) {
    const auto scans = ReadScans(path);
    if (!scans) return nullptr;
    std::array<std::vector<float>, channelCount + 1> curves;  // the current first, as in the file
    std::array<float, channelCount + 1> tops{};
    for (std::size_t k = 0; k < curves.size(); ++k) {
        for (std::size_t first = 0; first < scans->size(); first += rawStep) {
            const std::size_t end = std::min(first + rawStep, scans->size());
            float sum = 0;
            for (std::size_t i = first; i < end; ++i)
                sum += static_cast<float>((*scans)[i].words[k]);
            curves[k].push_back(sum / static_cast<float>(end - first));
            tops[k] = std::max(tops[k], curves[k].back());
        }
    }
    const float channelsTop = *std::max_element(tops.begin() + 1, tops.end());
    std::vector<std::uint8_t> bytes;
    for (std::size_t k = 1; k < curves.size(); ++k)
        AppendCurve(bytes, curves[k], channelsTop);
    AppendCurve(bytes, curves[0], tops[0]);
    return {{"values", curves[0].size()},
            {"step", rawStep},
            {"channels_top", channelsTop},
            {"current_top", tops[0]},
            {"data", Packed(bytes)}};
}

}  // namespace lanetools
