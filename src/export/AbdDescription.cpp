// SPDX-License-Identifier: MIT
#include "export/AbdDescription.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <string>

#include "discovery/SplitPath.h"
#include "export/AbdTags.h"
#include "export/Cut.h"
#include "export/SampleTexts.h"
#include "plugins/ScanRate.h"
#include "run/Plate.h"

namespace {

constexpr std::size_t maxGelNameLength = 31;
constexpr std::size_t cutGelNameLength = 30;

// Name of the raw file, cut to what old readers can hold.
std::string GelName(const CSampleFile& sample) {
    if (!sample.rawTrace) return {};
    std::string folder = sample.rawTrace->path;
    const std::string name = SplitPath(folder);
    return name.size() > maxGelNameLength ? name.substr(0, cutGelNameLength) : name;
}

// With one decimal, after a point also when a library has changed the locale of the process.
std::string VersionText(float version) {
    char text[64];  // the longest is 42 characters
    return std::string(text, std::to_chars(text, std::end(text), version, std::chars_format::fixed, 1).ptr);
}

// Four characters without a terminator.
void AddLetters(IAbdWriter& writer, const char* name, const std::array<std::uint8_t, 4>& letters) {
    AddBytesTag(writer, name, 1, letters, letters.size());
}

}  // namespace

std::int32_t LaneOf(const CSampleInfo& info) {
    const char first = info.wellId.empty() ? '\0' : info.wellId.front();
    const std::int64_t row = (first >= 'a' && first <= 'z' ? first - 'a' + 'A' : first) - 'A';
    const char* number = info.wellId.empty() ? "" : info.wellId.c_str() + 1;
    const std::int64_t col = std::int64_t{CutTo32(std::strtol(number, nullptr, 10))} - 1;
    // The sum is taken modulo 256, so each factor may be.
    const std::int64_t wells = std::int64_t{CutTo8(info.plateColumns - col)} * CutTo8(info.plateRows);
    return CutTo8(wells - row - 1) + 1;
}

void WriteCommentTags(IAbdWriter& writer, const CSampleInfo& info) {
    AddTextTag(writer, "CMBF", 1, "96-well capillary");
    AddTextTag(writer, "CMNT", 1, info.comment);
    AddTextTag(writer, "CTTL", 1, "Comment:");
}

void WriteRunTags(IAbdWriter& writer, const CSampleFile& sample) {
    AddTextTag(writer, "EVNT", 1, "Run started at:");
    AddTextTag(writer, "EVNT", 2, "Run stopped at:");
    AddLetters(writer, "FWO_", {'C', 'A', 'G', 'T'});
    AddTextTag(writer, "GELN", 1, GelName(sample));
    AddTextTag(writer, "GELP", 1, sample.plate->scan.folder);
    AddNumberTag(writer, "LANE", 1, LaneOf(sample.info));
    AddTextTag(writer, "MCHN", 1, MachineText(sample.info));
    AddLetters(writer, "MODL", {'1', '0', '0', '0'});
}

void WritePlateTags(IAbdWriter& writer, const CSampleInfo& info) {
    AddNumberTag(writer, "NChn", 1, channelCount);
    AddNumberTag(writer, "NLNE", 1, CutTo16(std::int64_t{info.plateColumns} * info.plateRows));
}

void WriteChemistryTags(IAbdWriter& writer, const CSampleInfo& info) {
    for (const std::int32_t number : {1, 2})
        AddTextTag(writer, "PDMF", number, info.chemistryName);
}

void WriteSampleTags(IAbdWriter& writer, const CSampleInfo& info) {
    AddDateTag(writer, "RUND", 1, info.runStart);
    AddDateTag(writer, "RUND", 2, info.runStop);
    AddTimeTag(writer, "RUNT", 1, info.runStart);
    AddTimeTag(writer, "RUNT", 2, info.runStop);
    AddTextTag(writer, "SMPL", 1, SampleLabel(info));
    AddNumberTag(writer, "SMPR", 1, TruncateTo32(ScanRateHz(info.scanRate)));
    AddTextTag(writer, "SVER", 1, VersionText(info.version));
}
