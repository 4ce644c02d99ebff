// SPDX-License-Identifier: MIT
// Traces: the electropherogram of one sample as arrays of doubles, one element per scan.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "samplestore/CalledBases.h"
#include "samplestore/RuntimeClass.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

class CBaseCaller;

class CCapTrace : public CObject {
  public:
    static const CRuntimeClass runtimeClass;

    std::uint32_t scanCount = 0;
    std::vector<double> current;                             // scanCount values
    std::array<std::vector<double>, channelCount> channels;  // scanCount values each, channel 1 first
    double traceStart = 0;                                   // first raw scan of the processed range
    double traceEnd = 0;                                     // one past its last raw scan

    const CRuntimeClass& GetRuntimeClass() const override;
    virtual void FreeArrays() {}
    // Fills the arrays from the records that TakeScans kept, if any. Must be called before the arrays of a trace that
    // was loaded from a file are read.
    void FillArrays();
    // Converts the trace to scan records; see the derived classes.
    virtual void ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo& analysis) const;
    // Fills the arrays from records; scanCount must be set before. Missing records count as zeros.
    virtual void BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo& analysis);
    // The same with the scanCount records of a file. The arrays are not filled until FillArrays: many operations on a
    // sample never need them.
    virtual void TakeScans(std::unique_ptr<ScanRecord[]> scans, const CAnalysisInfo& analysis);

    // True once the trace has been filled, even with 0 scans.
    bool HasChannels() const { return hasChannels; }

  protected:
    // Fills the arrays from records in the form that this kind of trace has in a file.
    virtual void Decode(std::span<const ScanRecord>) {}
    // The work of Decode; `valueOf` converts the word of a channel to its value.
    template <class ValueOf>
    void FillFrom(std::span<const ScanRecord> scans, ValueOf valueOf);
    // Releases the arrays and the kept records.
    void ReleaseArrays();

    bool hasChannels = false;
    std::unique_ptr<ScanRecord[]> kept;  // scanCount records to fill the arrays from, or null
};

// A sample as the instrument recorded it: whole numbers, the unsigned words of the file.
class CRawTrace : public CCapTrace {
  public:
    static const CRuntimeClass runtimeClass;

    const CRuntimeClass& GetRuntimeClass() const override;
    void FreeArrays() override;
    // Writes records of unsigned numbers over those of `scans`, which must already have scanCount elements.
    void ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo& analysis) const override;
    void BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo& analysis) override;

  private:
    void Decode(std::span<const ScanRecord> scans) override;
};

// A sample after base calling: a range of the scans, with the called bases.
class CProcessedTrace : public CCapTrace {
  public:
    static const CRuntimeClass runtimeClass;

    CCalledBases calledBases;
    std::optional<Matrix4> separationMatrix;  // the matrix used; rows and columns are A, C, T, G

    CProcessedTrace();
    ~CProcessedTrace() override;

    const CRuntimeClass& GetRuntimeClass() const override;
    void FreeArrays() override;
    // Appends float records to `scans` and brings `analysis` up to date; without called bases the sequence and its
    // arrays keep what they held.
    void ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo& analysis) const override;
    void BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo& analysis) override;
    // The bases and all other values from `analysis` are set at once.
    void TakeScans(std::unique_ptr<ScanRecord[]> scans, const CAnalysisInfo& analysis) override;

    // Moves the channels and the current into the trace. All have the same length, which becomes scanCount.
    void SetArrays(std::array<std::vector<double>, channelCount> newChannels, std::vector<double> newCurrent);

    // Who called the bases: a caller of the run (not owned), or for a stored sample an owned record with only a name,
    // or null.
    const CBaseCaller* CallerInfo() const { return callerInfo; }
    void SetCallerInfo(CBaseCaller* caller);

    // Computes how to map the values to 0..range: `offset` becomes the lowest value of the whole trace, at most 1000,
    // and the result is the divisor for a value minus `offset`.
    double ScaleFor(double& offset, double range) const;

  private:
    void Decode(std::span<const ScanRecord> scans) override;
    void TakeAnalysis(const CAnalysisInfo& analysis);

    CBaseCaller* callerInfo = nullptr;
    std::unique_ptr<CBaseCaller> ownCaller;
};

template <class ValueOf>
void CCapTrace::FillFrom(std::span<const ScanRecord> scans, ValueOf valueOf) {
    const std::size_t count = std::min<std::size_t>(scans.size(), scanCount);
    current.clear();
    current.reserve(scanCount);
    for (auto& channel : channels) {
        channel.clear();
        channel.reserve(scanCount);
    }
    // Works in blocks, so that the zeros written by resize are still in the first-level cache.
    constexpr std::size_t block = 512;
    for (std::size_t first = 0; first < count; first += block) {
        const std::size_t end = std::min(first + block, count);
        current.resize(end);
        for (auto& channel : channels)
            channel.resize(end);
        const std::array<double*, channelCount> to{channels[0].data(), channels[1].data(), channels[2].data(),
                                                   channels[3].data()};
        for (std::size_t i = first; i < end; ++i) {
            current[i] = scans[i].words[0];
            for (std::size_t k = 0; k < channelCount; ++k)
                to[k][i] = valueOf(scans[i].words[k + 1]);
        }
    }
    current.resize(scanCount);
    for (auto& channel : channels)
        channel.resize(scanCount);
    hasChannels = true;
}
