// SPDX-License-Identifier: MIT
#include "samplegen/Description.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "samplegen/Dyes.h"
#include "samplegen/Trace.h"

namespace samplegen {

namespace {

template <std::size_t N>
void SetField(std::array<char, N>& field, const std::string& text) {
    std::copy_n(text.begin(), std::min(text.size(), N - 1), field.begin());
}

std::string ChemistryOf(const std::string& baseOrder) {
    if (baseOrder == "TGCA") return "LD Terminators";
    if (baseOrder == "ACTG") return "LD Primers";
    if (baseOrder == "AGCT") return "RFK-Version 2 Terminators";
    return "Synthetic " + baseOrder;
}

void DescribeChemistry(CSampleInfo& info, const std::string& baseOrder) {
    info.chemistryName = ChemistryOf(baseOrder);
    info.chemistryApplication = "Sequencing";
    info.beamSplitterA = "535 nm";
    info.beamSplitterB = "595 nm";
    info.laserMode = 1;
    for (std::size_t i = 0; i < channelCount; ++i) {
        const std::string base(1, baseOrder[i]);
        info.channel[i] = {base, Dyes()[i].name, Dyes()[i].filter};
        SetField(info.channelBase[i], base);
    }
}

void DescribeRun(CSampleInfo& info, double seconds) {
    constexpr std::int32_t start = 1709625600;  // 5 March 2024, 8:00
    info.runVoltage = 9000;
    info.runTime = static_cast<float>(seconds);
    info.injectionVoltage = 2000;
    info.injectionTime = 10;
    info.temperature = 50;
    info.pmtVoltage1 = 640;
    info.pmtVoltage2 = 655;
    info.runStart = start;
    info.runStop = start + static_cast<std::int32_t>(seconds);
    info.capillaries = 16;
    info.machineId = "SYN-16";
    SetField(info.instrumentId, "SYN-16");
    SetField(info.operatorName, "samplegen");
    SetField(info.runId, "1");
}

bool ReachesLimit(const std::vector<ScanRecord>& scans) {
    return std::any_of(scans.begin(), scans.end(), [](const ScanRecord& scan) {
        return std::any_of(scan.words.begin() + 1, scan.words.end(), [](auto word) { return word == detectorLimit; });
    });
}

}  // namespace

int PlateColumns(int wells) {
    return wells > 96 ? 24 : 12;
}

int PlateRows(int wells) {
    return wells > 96 ? 16 : 8;
}

std::string WellName(int well, int wells) {
    const int columns = PlateColumns(wells);
    char name[16];
    std::snprintf(name, sizeof name, "%c%02d", 'A' + well / columns, well % columns + 1);
    return name;
}

CSampleInfo DescribeSample(const Options& options, int well, const Matrix4& separation,
                           const std::vector<ScanRecord>& scans, double scansPerSecond) {
    CSampleInfo info;
    info.wellId = WellName(well, options.wells);
    info.plateId = options.plate;
    info.sampleName = options.plate + " " + info.wellId;
    info.comment = "Synthetic sample, seed " + std::to_string(options.seed);
    info.barCode = "SYN" + std::to_string(options.seed);
    info.plateColumns = PlateColumns(options.wells);
    info.plateRows = PlateRows(options.wells);
    DescribeChemistry(info, options.baseOrder);
    info.separationMatrix = separation;
    DescribeRun(info, static_cast<double>(scans.size()) / scansPerSecond);
    info.saturated = ReachesLimit(scans);
    info.version = options.version == "1.1" ? 1.1f : 1.2f;
    info.scanCount = static_cast<std::uint32_t>(scans.size());
    info.scanRate = options.scanRate;
    return info;
}

}  // namespace samplegen
