// SPDX-License-Identifier: MIT
// The description of one sample and the results of base calling.
//
// Plain value records. Texts and arrays are empty and numbers 0 until set. RsdTrailer.h and PropertyKeys.h show where
// each field is in a sample file.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

constexpr int channelCount = 4;

using BaseStrengths = std::array<float, channelCount>;
using Matrix4 = std::array<std::array<float, 4>, 4>;

// What one detector channel shows.
struct CChannelInfo {
    std::string base;
    std::string dye;
    std::string filter;
};

// The results of base calling. Arrays per base have `basesCalled` elements, those per zone `snZoneCount`, those per
// spacing measurement `spacingCount`; but a damaged file may contain arrays of other lengths, so check the size before
// indexing. Qualities are in percent, positions are raw scan numbers.
struct CAnalysisInfo {
    std::string baseCaller;  // display name of the library
    std::int16_t basesCalled = 0;
    std::int32_t endGood = 0;      // base index of the last base of the good region
    std::int32_t endSequence = 0;  // scan of the last base
    std::int32_t endTrace = 0;     // end of the processed range
    std::int32_t endSignal = 0;
    std::int32_t endRawData = 0;
    float qualityIndex = 0;
    std::vector<float> qualityScores;
    std::vector<std::int32_t> descriptors;
    std::vector<BaseStrengths> strengths;
    std::string sequence;
    std::vector<std::int32_t> peakPositions;
    std::int32_t startGood = 0;
    std::int32_t startSequence = 0;
    std::int32_t startTrace = 0;
    std::int32_t startSignal = 0;
    std::int32_t startRawData = 0;
    std::int32_t snZoneCount = 0;
    std::vector<std::int32_t> snZoneStarts, snZoneEnds;
    std::array<std::vector<std::int32_t>, channelCount> snSignal, snNoise;
    std::string basecallError;  // why the base call failed; empty if it did not
    std::int32_t spacingCount = 0;
    std::vector<float> spacingFwhm;
    std::vector<std::int32_t> spacingGaps;
    std::vector<std::int32_t> spacingPositions;
    std::int32_t currentFixAreas = 0;
    float separationQuality = 0;
    std::vector<float> separationQualities;
    std::int32_t separationDepth = 0;
    std::vector<std::int32_t> psdPoints;
};

struct CSampleInfo {
    std::string plateId;
    std::string sampleName;
    std::string comment;
    std::string chemistryName;
    std::string chemistryApplication;
    std::string beamSplitterA;
    std::string beamSplitterB;
    std::uint8_t laserMode = 0;
    std::array<CChannelInfo, channelCount> channel;
    std::string barCode;
    std::string machineId;
    std::string wellId;      // row letter and column number, "A01"
    std::string sourceFile;  // name of the file that the sample was imported from; empty if it was not
    std::int32_t plateColumns = 0;
    std::int32_t plateRows = 0;
    CAnalysisInfo analysis;
    float runVoltage = 0;
    float runTime = 0;
    float injectionVoltage = 0;
    float injectionTime = 0;
    float temperature = 0;
    std::int32_t laserIndex = 0;
    float pmtVoltage1 = 0, pmtVoltage2 = 0;
    std::array<std::int32_t, 7> runParameters{};
    Matrix4 separationMatrix{};  // row after row
    std::array<char, 30> operatorName{};
    std::array<std::array<char, 10>, channelCount> channelBase{};  // text of each channel's base
    std::array<char, 22> instrumentId{};
    std::array<char, 30> reservedText{};
    std::array<char, 6> runId{};
    bool saturated = false;
    bool processed = false;
    float version = 0;
    std::int32_t runStart = 0, runStop = 0;  // seconds since 1 January 1970
    std::uint32_t scanCount = 0;
    std::int32_t scanRate = 0;  // an index, see ScanRate.h
    std::uint8_t capillaries = 0;
    std::uint8_t trailerByte626 = 0;
};

// The text in a field of bytes: up to its NUL, or all of it.
template <std::size_t N>
std::string FieldText(const std::array<char, N>& field) {
    std::size_t length = 0;
    while (length < N && field[length] != '\0')
        ++length;
    return std::string(field.data(), length);
}
