// Traces: the electropherogram of one sample as arrays of doubles, one element a scan.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
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
    // Fills the arrays from the records that TakeScans kept, if it kept any. Whoever reads the arrays of a raw trace
    // that was loaded calls it before.
    virtual void FillArrays() {}
    // Writes the trace back as scan records; the forms differ, see the derived classes.
    virtual void ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo& analysis) const;
    // Fills the arrays from records; scanCount must be set before. Records that are missing read as zeros.
    virtual void BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo& analysis);
    // The same with the scanCount records of a file, which a raw trace keeps until its arrays are needed.
    virtual void TakeScans(std::unique_ptr<ScanRecord[]> scans, const CAnalysisInfo& analysis);

    // True once the trace has channels, even with 0 scans.
    bool HasChannels() const { return hasChannels; }

  protected:
    // Fills `current` and `channels` from records; `valueOf` makes a channel's value of its word.
    template <class ValueOf>
    void FillFrom(std::span<const ScanRecord> scans, ValueOf valueOf);
    void ReleaseArrays();
    bool hasChannels = false;
};

// A sample as the instrument recorded it: whole numbers, the unsigned words of the file.
class CRawTrace : public CCapTrace {
  public:
    static const CRuntimeClass runtimeClass;

    const CRuntimeClass& GetRuntimeClass() const override;
    void FreeArrays() override;
    // Integer records into `scans`, which must already hold scanCount records.
    void ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo& analysis) const override;
    void BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo& analysis) override;
    void FillArrays() override;
    void TakeScans(std::unique_ptr<ScanRecord[]> scans, const CAnalysisInfo& analysis) override;

  private:
    // Many operations on a sample need no more of the raw trace than that it could be read.
    std::unique_ptr<ScanRecord[]> kept;
};

// A sample after base calling: a range of the scans, with the called bases.
class CProcessedTrace : public CCapTrace {
  public:
    static const CRuntimeClass runtimeClass;

    CCalledBases calledBases;
    std::optional<Matrix4> separationMatrix;  // the spectral separation matrix in use, A, C, T, G in rows and columns

    CProcessedTrace();
    ~CProcessedTrace() override;

    const CRuntimeClass& GetRuntimeClass() const override;
    void FreeArrays() override;
    // Appends float records to `scans` and brings `analysis` up to date; without called bases the sequence and its
    // arrays keep what they held.
    void ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo& analysis) const override;
    void BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo& analysis) override;

    // Takes over a range of scans: channels and current of `count` elements each.
    void SetArrays(std::array<std::vector<double>, channelCount> newChannels, std::vector<double> newCurrent);

    // Who called the bases: a caller of the run (not owned), or a private record with a name (owned), or none.
    const CBaseCaller* CallerInfo() const { return callerInfo; }
    void SetCallerInfo(CBaseCaller* caller);

    // Scale and offset that bring the samples to 0..range: `offset` gets the lowest value of the whole trace (1000 at
    // the most), the result is what a value less `offset` is divided by.
    double ScaleFor(double& offset, double range) const;

  private:
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
    // In blocks, so that the zeros with which the arrays grow are still in the processor's nearest cache.
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
