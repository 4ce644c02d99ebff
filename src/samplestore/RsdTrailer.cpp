#include "samplestore/RsdTrailer.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <string>

#include "samplestore/LittleEndian.h"
#include "samplestore/XorWords.h"

namespace {

constexpr std::size_t plateColumnsAt = 496, plateRowsAt = 500;
constexpr std::size_t totalSizeAt = 454, treeSizeAt = 458;
constexpr std::size_t versionAt = 604, checksumAt = 628;
constexpr std::int32_t defaultColumns = 12, defaultRows = 8;

// At most size - 1 characters; the rest of the field becomes NUL.
void StoreText(std::uint8_t* field, std::size_t size, const std::string& text) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::copy_n(text.begin(), length, field);
    std::fill(field + length, field + size, std::uint8_t{0});
}

template <std::size_t N>
void LoadBytes(const std::uint8_t* field, std::array<char, N>& out) {
    std::memcpy(out.data(), field, N);
}

template <std::size_t N>
void StoreBytes(std::uint8_t* field, const std::array<char, N>& from) {
    std::memcpy(field, from.data(), N);
}

}  // namespace

bool CRsdTrailer::IsVersionValid() const {
    const float version = LoadFloat(&bytes[versionAt]);
    // Compared as 64-bit values: the 32-bit value nearest 1.1 lies just above it.
    return version >= 1.1 && version <= 1000.0;
}

void CRsdTrailer::Decode(CSampleInfo& info) const {
    const std::uint8_t* b = bytes.data();
    LoadBytes(b + 24, info.operatorName);
    info.runVoltage = LoadFloat(b + 54);
    info.runTime = LoadFloat(b + 58);
    info.injectionTime = LoadFloat(b + 62);
    info.injectionVoltage = LoadFloat(b + 66);
    info.temperature = LoadFloat(b + 70);
    info.laserIndex = LoadI32(b + 74);
    info.pmtVoltage1 = LoadFloat(b + 78);
    info.pmtVoltage2 = LoadFloat(b + 82);
    for (std::size_t i = 0; i < info.runParameters.size(); ++i)
        info.runParameters[i] = LoadI32(b + 266 + 4 * i);
    for (std::size_t i = 0; i < 16; ++i)
        info.separationMatrix[i / 4][i % 4] = LoadFloat(b + 294 + 4 * i);
    for (std::size_t i = 0; i < channelCount; ++i)
        LoadBytes(b + 358 + 10 * i, info.channelBase[i]);
    LoadBytes(b + 398, info.instrumentId);
    LoadBytes(b + 420, info.reservedText);
    info.plateColumns = LoadI32(b + plateColumnsAt);
    if (info.plateColumns < 1) info.plateColumns = defaultColumns;
    info.plateRows = LoadI32(b + plateRowsAt);
    if (info.plateRows < 1) info.plateRows = defaultRows;
    LoadBytes(b + 568, info.runId);
    info.processed = LoadI32(b + 596) != 1;
    info.saturated = LoadI32(b + 600) != 0;
    info.version = LoadFloat(b + versionAt);
    info.runStart = LoadI32(b + 608);
    info.runStop = LoadI32(b + 612);
    info.scanCount = LoadU32(b + 616);
    info.scanRate = LoadI32(b + 620);
    info.capillaries = b[625];
    info.trailerByte626 = b[626];
}

void CRsdTrailer::Encode(const CSampleInfo& info) {
    std::uint8_t* b = bytes.data();
    StoreText(b, 24, info.sampleName);
    StoreBytes(b + 24, info.operatorName);
    StoreFloat(b + 54, info.runVoltage);
    StoreFloat(b + 58, info.runTime);
    StoreFloat(b + 62, info.injectionTime);
    StoreFloat(b + 66, info.injectionVoltage);
    StoreFloat(b + 70, info.temperature);
    StoreI32(b + 74, info.laserIndex);
    StoreFloat(b + 78, info.pmtVoltage1);
    StoreFloat(b + 82, info.pmtVoltage2);
    StoreText(b + 86, 30, info.beamSplitterA);
    StoreText(b + 116, 30, info.beamSplitterB);
    for (std::size_t i = 0; i < channelCount; ++i)
        StoreText(b + 146 + 30 * i, 30, info.channel[i].filter);
    for (std::size_t i = 0; i < info.runParameters.size(); ++i)
        StoreI32(b + 266 + 4 * i, info.runParameters[i]);
    for (std::size_t i = 0; i < 16; ++i)
        StoreFloat(b + 294 + 4 * i, info.separationMatrix[i / 4][i % 4]);
    for (std::size_t i = 0; i < channelCount; ++i)
        StoreBytes(b + 358 + 10 * i, info.channelBase[i]);
    StoreBytes(b + 398, info.instrumentId);
    StoreBytes(b + 420, info.reservedText);
    std::memcpy(b + 450, "ESD1", 4);
    StoreBytes(b + 568, info.runId);
    StoreText(b + 574, 18, info.plateId);
    StoreI32(b + 596, info.processed ? 0 : 1);
    StoreI32(b + 600, info.saturated ? 1 : 0);
    StoreFloat(b + versionAt, info.version);
    StoreI32(b + 608, info.runStart);
    StoreI32(b + 612, info.runStop);
    StoreU32(b + 616, info.scanCount);
    StoreI32(b + 620, info.scanRate);
    b[625] = info.capillaries;
    b[626] = info.trailerByte626;
}

void CRsdTrailer::SetPlateSize(std::int32_t columns, std::int32_t rows) {
    StoreI32(&bytes[plateColumnsAt], columns);
    StoreI32(&bytes[plateRowsAt], rows);
}

std::uint32_t CRsdTrailer::TotalSize() const {
    return LoadU32(&bytes[totalSizeAt]);
}

std::uint32_t CRsdTrailer::TreeSize() const {
    return LoadU32(&bytes[treeSizeAt]);
}

void CRsdTrailer::SetSizes(std::uint32_t totalSize, std::uint32_t treeSize) {
    StoreU32(&bytes[totalSizeAt], totalSize);
    StoreU32(&bytes[treeSizeAt], treeSize);
}

std::uint32_t CRsdTrailer::Checksum() const {
    return LoadU32(&bytes[checksumAt]);
}

void CRsdTrailer::SetChecksum(std::uint32_t checksum) {
    StoreU32(&bytes[checksumAt], checksum);
}

std::uint32_t CRsdTrailer::Share() const {
    return XorWords(std::as_bytes(std::span(bytes)).first(checkedSize));
}
