// SPDX-License-Identifier: MIT
#include "lanetools/samples/SampleRow.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <span>

#include "lanetools/samples/CallFigures.h"
#include "lanetools/samples/MixedPlaces.h"
#include "lanetools/samples/Stretch.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

// Of a plate, so that a letter and two digits name each well.
constexpr std::int32_t mostColumns = 99, mostRows = 26;

// Seconds since 1 January 1970.
std::string UtcText(std::int32_t seconds) {
    if (seconds == 0) return "";
    const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text.data();
}

void FillFigures(CSampleRow& row, const CSampleInfo& info) {
    const CAnalysisInfo& analysis = info.analysis;
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(analysis.basesCalled, 0));
    const auto qualities = std::span(analysis.qualityScores).first(count);
    const CStretch good = GoodRegion(analysis);
    row.bases = static_cast<std::int64_t>(count);
    if (good.length > 0) row.goodStart = static_cast<std::int64_t>(good.start) + 1;
    row.goodLength = static_cast<std::int64_t>(good.length);
    row.q20 = CountAtLeast(qualities, 20);
    row.q30 = CountAtLeast(qualities, 30);
    row.crl = ContiguousReadLength(qualities);
    row.traceScore = OneDecimal(MeanPhred(qualities.subspan(good.start, good.length)));
    row.signal = OneDecimal(MeanSignal(analysis));
    row.noise = OneDecimal(MeanNoise(analysis));
    row.mixed = static_cast<std::int64_t>(MixedPlaces(info, good, usualMixedRatio).size());
}

}  // namespace

std::optional<double> OneDecimal(std::optional<double> value) {
    return value ? std::optional(std::round(*value * 10) / 10) : std::nullopt;
}

std::vector<std::string> ColumnNames() {
    std::vector<std::string> names;
    VisitColumns(CSampleRow{}, [&](const char* name, const auto&) { names.emplace_back(name); });
    return names;
}

std::string ValueText(const std::string& value) {
    return value;
}

std::string ValueText(const std::optional<std::int64_t>& value) {
    return value ? std::to_string(*value) : "";
}

std::string ValueText(const std::optional<double>& value) {
    if (!value) return "";
    std::array<char, 400> text{};  // room for the largest number
    const auto end = std::to_chars(text.data(), text.data() + text.size(), *value, std::chars_format::fixed, 1);
    return std::string(text.data(), end.ptr);
}

std::optional<std::string> ColumnText(const CSampleRow& row, std::string_view column) {
    std::optional<std::string> text;
    VisitColumns(row, [&](const char* name, const auto& value) {
        if (column == name) text = ValueText(value);
    });
    return text;
}

CSampleRow MakeRow(const CStoredSample& sample, const std::string& plateFolder) {
    CSampleRow row;
    Identify(row, sample.info, plateFolder);
    row.file = ToUtf8(sample.stem);
    row.state = sample.state;
    row.reason = ToUtf8(sample.reason);
    row.caller = ToUtf8(sample.info.analysis.baseCaller);
    row.path = sample.path;
    row.unread = sample.unread;
    if (sample.state == SampleState::Called) FillFigures(row, sample.info);
    return row;
}

void Identify(CSampleRow& row, const CSampleInfo& info, const std::string& plateFolder) {
    row.plate = ToUtf8(info.plateId.empty() ? plateFolder : info.plateId);
    row.well = ToUtf8(info.wellId);
    row.sample = ToUtf8(info.sampleName);
    row.runStart = UtcText(info.runStart);
    row.source = ToUtf8(info.sourceFile);
    if (info.plateColumns > 0 && info.plateColumns <= mostColumns) row.plateColumns = info.plateColumns;
    if (info.plateRows > 0 && info.plateRows <= mostRows) row.plateRows = info.plateRows;
}

std::string PlateFolderOf(const std::string& outputFolderName) {
    const std::string_view name = outputFolderName;
    if (!name.ends_with(outputSuffix)) return outputFolderName;
    const std::size_t code = name.substr(0, name.size() - std::string_view(outputSuffix).size()).rfind('_');
    return code == std::string_view::npos || code == 0 ? outputFolderName : outputFolderName.substr(0, code);
}

}  // namespace lanetools
