// SPDX-License-Identifier: MIT
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
constexpr std::size_t rawFlagAt = 596, saturatedFlagAt = 600;
constexpr std::size_t versionAt = 604, checksumAt = 628;
constexpr std::int32_t defaultColumns = 12, defaultRows = 8;

// Stores at most size - 1 characters; the rest of the field becomes NUL.
void StoreText(std::uint8_t* field, std::size_t size, const std::string& text) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::copy_n(text.begin(), length, field);
    std::fill(field + length, field + size, std::uint8_t{0});
}

// The fields that are both read and written. Info is CSampleInfo or const CSampleInfo.
template <class Access, class Info>
void ForEachField(Access access, Info& info) {
    access(24, info.operatorName);
    access(54, info.runVoltage);
    access(58, info.runTime);
    access(62, info.injectionTime);
    access(66, info.injectionVoltage);
    access(70, info.temperature);
    access(74, info.laserIndex);
    access(78, info.pmtVoltage1);
    access(82, info.pmtVoltage2);
    access(266, info.runParameters);
    access(294, info.separationMatrix);
    access(358, info.channelBase);
    access(398, info.instrumentId);
    access(420, info.reservedText);
    access(568, info.runId);
    access(versionAt, info.version);
    access(608, info.runStart);
    access(612, info.runStop);
    access(616, info.scanCount);
    access(620, info.scanRate);
    access(625, info.capillaries);
    access(626, info.trailerByte626);
}

}  // namespace

bool CRsdTrailer::IsVersionValid() const {
    const float version = LoadFloat(&bytes[versionAt]);
    // Compared as 64-bit values, since the 32-bit value nearest to 1.1 is slightly above it.
    return version >= 1.1 && version <= 1000.0;
}

// Fields are copied byte for byte, since numbers in memory are little-endian too (LittleEndian.h).

void CRsdTrailer::Decode(CSampleInfo& info) const {
    ForEachField([&](std::size_t at, auto& field) { std::memcpy(&field, &bytes[at], sizeof field); }, info);
    info.plateColumns = LoadI32(&bytes[plateColumnsAt]);
    if (info.plateColumns < 1) info.plateColumns = defaultColumns;
    info.plateRows = LoadI32(&bytes[plateRowsAt]);
    if (info.plateRows < 1) info.plateRows = defaultRows;
    info.processed = LoadI32(&bytes[rawFlagAt]) != 1;
    info.saturated = LoadI32(&bytes[saturatedFlagAt]) != 0;
}

void CRsdTrailer::Encode(const CSampleInfo& info) {
    ForEachField([&](std::size_t at, const auto& field) { std::memcpy(&bytes[at], &field, sizeof field); }, info);
    StoreI32(&bytes[rawFlagAt], info.processed ? 0 : 1);
    StoreI32(&bytes[saturatedFlagAt], info.saturated ? 1 : 0);
    StoreText(&bytes[0], 24, info.sampleName);
    StoreText(&bytes[86], 30, info.beamSplitterA);
    StoreText(&bytes[116], 30, info.beamSplitterB);
    for (std::size_t i = 0; i < channelCount; ++i)
        StoreText(&bytes[146 + 30 * i], 30, info.channel[i].filter);
    StoreText(&bytes[574], 18, info.plateId);
    std::memcpy(&bytes[450], "ESD1", 4);
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

std::uint32_t CRsdTrailer::ChecksumPart() const {
    return XorWords(std::as_bytes(std::span(bytes)).first(checkedSize));
}
