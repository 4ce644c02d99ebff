// SPDX-License-Identifier: MIT
#include "lanetools/import/InstrumentSample.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <tuple>
#include <utility>

#include "lanetools/import/AbifDirectory.h"
#include "lanetools/import/RawSeries.h"
#include "lanetools/import/RunTimes.h"
#include "lanetools/samples/Well.h"

namespace lanetools {

namespace {

// The first of the texts that is not empty.
std::string Either(std::string text, std::string other) {
    return text.empty() ? std::move(other) : std::move(text);
}

// 0 for a value that is missing or that a float cannot hold.
float FloatOf(const CAbifDirectory& directory, std::string_view name) {
    const double value = directory.Number(name).value_or(0);
    return std::abs(value) <= std::numeric_limits<float>::max() ? static_cast<float>(value) : 0;
}

template <std::size_t N>
void SetField(std::array<char, N>& field, const std::string& text) {
    text.copy(field.data(), N - 1);
}

void ReadLetters(const CAbifDirectory& directory, CSampleInfo& info) {
    const std::string letters = directory.Text("FWO_");
    std::string sorted = letters;
    std::sort(sorted.begin(), sorted.end());
    if (sorted != "ACGT") throw CUnusable("the channels are not those of A, C, G and T: FWO_ is \"" + letters + "\"");
    for (std::size_t i = 0; i < channelCount; ++i) {
        const auto number = static_cast<std::int32_t>(i + 1);
        info.channelBase[i][0] = letters[i];
        info.channel[i].base = letters[i];
        info.channel[i].dye = directory.Text("DyeN", number);
        const double waveLength = directory.Number("DyeW", number).value_or(0);
        if (waveLength >= 1 && waveLength <= 9999)
            info.channel[i].filter = std::to_string(static_cast<int>(waveLength));
    }
}

void ReadNames(const CAbifDirectory& directory, CSampleInfo& info) {
    info.sampleName = Either(directory.Text("SMPL"), directory.Text("SpNm"));
    info.plateId = Either(directory.Text("CTID"), directory.Text("CTNM"));
    info.machineId = directory.Text("MCHN");
    SetField(info.instrumentId, directory.Text("MODL"));
    SetField(info.operatorName, directory.Text("User"));
}

void ReadChemistry(const CAbifDirectory& directory, CSampleInfo& info) {
    const std::string dyeSet = directory.Text("DySN");
    std::string mobility = directory.Text("PDMF");
    if (mobility.ends_with(".mob")) mobility.resize(mobility.size() - 4);
    info.chemistryName = Either(mobility, dyeSet);
    info.chemistryApplication = dyeSet;
}

void ReadConditions(const CAbifDirectory& directory, CSampleInfo& info) {
    info.runVoltage = FloatOf(directory, "EPVt");
    info.injectionVoltage = FloatOf(directory, "InVt");
    info.injectionTime = FloatOf(directory, "InSc");
    info.temperature = FloatOf(directory, "Tmpr");
    const double capillaries = directory.Number("NLNE").value_or(1);
    info.capillaries = static_cast<std::uint8_t>(capillaries >= 0 && capillaries <= 255 ? capillaries : 0);
    info.runStart = RunMoment(directory, 1).value_or(0);
    info.runStop = RunMoment(directory, 2).value_or(0);
    const bool hasDuration = info.runStart > 0 && info.runStop > info.runStart;
    info.runTime = hasDuration ? static_cast<float>(info.runStop - info.runStart) : 0;
}

std::string Comment(const CAbifDirectory& directory, const CRawSeries& raw) {
    std::string comment = directory.Text("CMNT");
    comment += comment.empty() ? "channels lifted by" : "; channels lifted by";
    for (const std::int64_t lift : raw.lifts)
        comment += ' ' + std::to_string(lift);
    return comment;
}

}  // namespace

CInstrumentSample ReadInstrumentSample(std::span<const std::byte> file) {
    const CAbifDirectory directory(file);
    CRawSeries raw = ReadRawSeries(directory);
    CInstrumentSample sample;
    CSampleInfo& info = sample.info;
    ReadLetters(directory, info);
    ReadNames(directory, info);
    ReadChemistry(directory, info);
    ReadConditions(directory, info);
    info.comment = Comment(directory, raw);
    sample.wellText = directory.Text("TUBE");
    info.wellId = WellName(sample.wellText).value_or("");
    info.version = 1.2f;
    for (std::size_t i = 0; i < channelCount; ++i)
        info.separationMatrix[i][i] = 1;
    info.saturated = raw.isSaturated;
    info.scanCount = static_cast<std::uint32_t>(raw.scans.size());
    info.scanRate = NearestScanRate(directory, raw.scans.size());
    if (raw.isCut) sample.remark = "channels cut to " + std::to_string(raw.scans.size()) + " scans";
    sample.scans = std::move(raw.scans);
    return sample;
}

}  // namespace lanetools
