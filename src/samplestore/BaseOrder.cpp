// SPDX-License-Identifier: MIT
// CSampleFile: finding out which channel shows which base.
#include <algorithm>

#include "config/RunSettings.h"
#include "discovery/SplitPath.h"
#include "platform/Ascii.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "samplestore/ChannelOrder.h"
#include "samplestore/SampleFile.h"

namespace {

// From this version on a file gives the bases of its channels in the property tree.
constexpr double versionWithNames = 1.2;

}  // namespace

bool CSampleFile::OrderFromNames() {
    for (const CChannelInfo& channel : info.channel)
        if (channel.base.empty()) return false;
    for (std::size_t i = 0; i < channelCount; ++i)
        baseOrder[i] = info.channel[i].base.front();
    return true;
}

bool CSampleFile::OrderFromLetters(bool forced) {
    if (forced) return false;
    for (const auto& letters : info.channelBase)
        if (letters.front() == '\0') return false;
    for (std::size_t i = 0; i < channelCount; ++i)
        baseOrder[i] = platform::UpperAscii(info.channelBase[i].front());
    return true;
}

void CSampleFile::SetLetters(const std::string& order) {
    for (std::size_t i = 0; i < channelCount; ++i)
        baseOrder[i] = i < order.size() ? order[i] : '\0';
}

void CSampleFile::OrderFromFallback(const std::string& fallbackOrder) {
    SetLetters(fallbackOrder);
    for (std::size_t i = 0; i < channelCount; ++i) {
        const char c = baseOrder[i];
        info.channelBase[i].front() = c;
        info.channel[i].base.assign(c == '\0' ? 0 : 1, c);
    }
}

// Sets the order from the current description without changing or logging anything else.
void CSampleFile::OrderFromDescription(const std::string& fallbackOrder) {
    const bool forced = plate->Settings().baseOrderForced != 0;
    const bool hasNames = info.version >= versionWithNames;
    if (forced || (!(hasNames && OrderFromNames()) && !OrderFromLetters(forced))) SetLetters(fallbackOrder);
    FinishBaseOrder();
}

void CSampleFile::ResolveBaseOrder(const std::string& fallbackOrder) {
    const bool forced = plate->Settings().baseOrderForced != 0;
    const bool hasNames = info.version >= versionWithNames;
    if (hasNames && forced) {
        OrderFromFallback(fallbackOrder);
    } else if (!(hasNames && OrderFromNames()) && !OrderFromLetters(forced)) {
        OrderFromFallback(fallbackOrder);
        plate->Log(FormatMessage(MessageId::NoBaseOrder, {fileName}));
    }
    FinishBaseOrder();
    NameByFile(info, fileName, plate->name);
}

void NameByFile(CSampleInfo& info, const std::string& fileName, const std::string& plateName) {
    if (info.version >= versionWithNames) return;
    constexpr std::size_t wellLength = 3;
    const std::string stem = WithoutExtension(fileName);
    const std::size_t well = stem.size() - std::min(stem.size(), wellLength);
    info.plateId = plateName;
    info.wellId = stem.substr(well);
    if (info.sampleName.empty()) info.sampleName = stem.substr(0, well);
}

// Fills the channel tables from the letters of the order, and ends the order with "N" and a NUL.
void CSampleFile::FinishBaseOrder() {
    constexpr std::string_view acgt = "ACGT", cagt = "CAGT";
    for (std::size_t j = 0; j < channelCount; ++j)
        for (std::size_t i = 0; i < channelCount; ++i) {
            if (baseOrder[j] == acgt[i]) channelOrderAcgt[i] = static_cast<std::int32_t>(j);
            if (baseOrder[j] == cagt[i]) channelOrderCagt[i] = static_cast<std::int32_t>(j);
        }
    baseOrder[4] = 'N';
    baseOrder[5] = '\0';
}

void CSampleFile::NameChemistry() {
    if (!info.chemistryName.empty()) return;
    const std::string order = platform::UpperAscii(baseOrder.c_str());
    if (order == "TGCAN") info.chemistryName = "LD Terminators";
    if (order == "ACTGN") info.chemistryName = "LD Primers";
    if (order == "AGCTN") info.chemistryName = "RFK-Version 2 Terminators";
}
