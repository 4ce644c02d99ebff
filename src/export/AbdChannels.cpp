// SPDX-License-Identifier: MIT
#include "export/AbdChannels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "export/AbdTags.h"
#include "export/Cut.h"
#include "export/Extremes.h"
#include "export/ScanValue.h"
#include "platform/Ascii.h"
#include "plugins/BaseCaller.h"
#include "samplestore/ChannelOrder.h"

namespace {

// The scans of a range. 64 bits, so that no sum overflows.
struct ScanRange {
    std::int64_t start, end, step;

    std::int64_t Count() const { return (end - start) / step; }
    // The same, with a last step that reaches beyond the end counted too.
    std::int64_t CountWithPart() const { return end > start ? (end - start + step - 1) / step : 0; }
};

// What brings a group of curves to the height of the file: a value less `low`, over `divisor`.
struct CurveScale {
    double low, divisor;
};

// The part of `range` that a search for extremes must visit in a curve of `size` scans: before and after the curve its
// first and last values repeat, so there one scan represents all.
ScanRange DistinctPart(ScanRange range, std::int64_t size) {
    if (range.end <= 0)
        range.end = std::min(range.end, range.start + range.step);
    else if (range.start < -range.step)
        range.start %= range.step;
    range.end = std::min(range.end, std::max(size, range.start) + range.step);
    return range;
}

CurveScale ScaleOf(const ChannelCurves& channels, const ScanRange& range) {
    Extremes found{1000.0, 0.0};
    for (const auto& channel : channels) {
        const ScanRange visited =
            DistinctPart({range.start, range.end - 1, range.step}, static_cast<std::int64_t>(channel.size()));
        found.Take(CScanValues(channel, visited.start, visited.CountWithPart(), visited.step).All());
    }
    const double spread = found.high - found.low;
    return {found.low, spread >= 1000.0 && spread <= 2000.0 ? 1.0 : spread * 0.0005};
}

// Elements of a series whose count was cut to 16 bits; 0 for a negative one.
std::size_t ElementsFor(std::int16_t count) {
    return static_cast<std::size_t>(std::max<std::int16_t>(count, 0));
}

std::vector<std::int16_t> ScaledSeries(const std::vector<double>& channel, const ScanRange& range,
                                       const CurveScale& scale) {
    std::vector<std::int16_t> series(ElementsFor(CutTo16(range.Count())));
    if (scale.divisor == 0.0) return series;
    const CScanValues values(channel, range.start, static_cast<std::int64_t>(series.size()), range.step);
    std::transform(values.All().begin(), values.All().end(), series.begin(),
                   [&](double value) { return TruncateTo16((value - scale.low) / scale.divisor); });
    return series;
}

void AddSingle(IAbdWriter& writer, std::int32_t number, std::int16_t value) {
    AddShortsTag(writer, "DATA", number, {&value, 1}, 1);
}

// 1000 for one library, whose matrices have 1 on the diagonal; otherwise the factor that makes the mean of the diagonal
// 1000.
double MatrixFactor(const CSampleFile& sample, const Matrix4& rows) {
    const CProcessedTrace* trace = sample.processedTrace ? sample.processedTrace->Processed() : nullptr;
    const CBaseCaller* caller = trace ? trace->CallerInfo() : nullptr;
    if (caller && platform::EqualIgnoringCase(caller->fileName, "VHTK.dll")) return 1000.0;
    double sum = 0.0;
    for (const std::int32_t c : channelOrderCagt)
        sum += std::fabs(rows[static_cast<std::size_t>(c)][static_cast<std::size_t>(c)]);
    return 4000.0 / sum;
}

}  // namespace

void WriteChannels(IAbdWriter& writer, const ChannelCurves& channels, std::int32_t start, std::int32_t end,
                   std::int32_t step, std::int32_t firstNumber) {
    const ScanRange range{start, end, step};
    if (range.Count() <= 0) return;
    const CurveScale scale = ScaleOf(channels, range);
    for (std::int32_t i = 0; i < channelCount; ++i) {
        const auto channel = static_cast<std::size_t>(channelOrderCagt[static_cast<std::size_t>(i)]);
        AddShortsTag(writer, "DATA", firstNumber + i, ScaledSeries(channels[channel], range, scale),
                     CutTo16(range.Count()));
    }
}

void WriteRunData(IAbdWriter& writer, const CSampleInfo& info, const std::vector<double>& current, std::int32_t start,
                  std::int32_t end, std::int32_t step) {
    const ScanRange range{start, end, step};
    if (range.Count() <= 0) return;
    AddSingle(writer, 5, TruncateTo16(info.pmtVoltage1));
    AddShortsTag(writer, "DATA", 6, ScaledSeries(current, range, {0.0, 1.0}), CutTo16(range.Count()));
    AddSingle(writer, 7, 0);
    AddSingle(writer, 8, TruncateTo16(info.temperature));
}

void WriteMatrix(IAbdWriter& writer, const CSampleFile& sample, const Matrix4& rows) {
    const double factor = MatrixFactor(sample, rows);
    std::array<std::int16_t, 16> elements{};
    if (std::isfinite(factor)) {
        auto element = elements.begin();
        for (const std::int32_t row : channelOrderCagt)
            for (const std::int32_t column : channelOrderCagt)
                *element++ =
                    TruncateTo16(rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] * factor);
    }
    for (const std::int32_t number : {1, 101})
        AddShortsTag(writer, "MTRX", number, elements, elements.size());
}
