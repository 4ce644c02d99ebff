// SPDX-License-Identifier: MIT
// The last 632 bytes of a sample file.
//
//   offset  size  type      content
//   0       24    text      sampleName (W)
//   24      30    bytes     operatorName
//   54      4     float     runVoltage
//   58      4     float     runTime
//   62      4     float     injectionTime
//   66      4     float     injectionVoltage
//   70      4     float     temperature
//   74      4     int       laserIndex
//   78      4     float     pmtVoltage1
//   82      4     float     pmtVoltage2
//   86      30    text      beamSplitterA (W)
//   116     30    text      beamSplitterB (W)
//   146     120   4 texts   filters of channels 1 to 4, 30 bytes each (W)
//   266     28    7 ints    runParameters
//   294     64    16 floats separationMatrix, row after row
//   358     40    4 x 10    channelBase
//   398     22    bytes     instrumentId
//   420     30    bytes     reservedText
//   450     4     bytes     magic "ESD1", written but not tested
//   454     4     unsigned  totalSize: tree block and trailer together, 0 in a file without a tree block
//   458     4     unsigned  treeSize: the tree block, 0 in a file without one
//   462     34    -         kept
//   496     4     int       plateColumns, only read; below 1 means 12
//   500     4     int       plateRows, only read; below 1 means 8
//   504     64    -         kept
//   568     6     bytes     runId
//   574     18    text      plateId (W)
//   592     4     -         kept
//   596     4     int       rawFlag: 1 for a raw sample, written as 0 for a processed one
//   600     4     int       saturatedFlag: not 0 if saturated
//   604     4     float     version, 1.1 to 1000
//   608     4     int       runStart, seconds since 1 January 1970
//   612     4     int       runStop, seconds since 1 January 1970
//   616     4     unsigned  scanCount
//   620     4     int       scanRate
//   624     1     -         kept
//   625     1     byte      capillaries
//   626     1     byte      trailerByte626
//   627     1     -         kept
//   628     4     unsigned  checksum
//
// (W): only written, for other programs that read the trailer alone; this program reads these from the property tree.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "samplestore/SampleInfo.h"

class CRsdTrailer {
  public:
    static constexpr std::size_t size = 632;
    static constexpr std::size_t checkedSize = 628;  // covered by the checksum: all but itself

    std::array<std::uint8_t, size> bytes{};

    // True if the version is one that a sample file can have, 1.1 to 1000.
    bool IsVersionValid() const;
    // Sets the fields of `info` that are read from the trailer; the others stay.
    void Decode(CSampleInfo& info) const;
    // Stores all fields that are written from `info`, and the magic. All other bytes stay, also plateColumns and
    // plateRows.
    void Encode(const CSampleInfo& info);

    void SetPlateSize(std::int32_t columns, std::int32_t rows);
    std::uint32_t TotalSize() const;
    std::uint32_t TreeSize() const;
    void SetSizes(std::uint32_t totalSize, std::uint32_t treeSize);
    std::uint32_t Checksum() const;
    void SetChecksum(std::uint32_t checksum);
    // XorWords over the first checkedSize bytes.
    std::uint32_t ChecksumPart() const;
};
