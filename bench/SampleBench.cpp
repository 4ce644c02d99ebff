// SPDX-License-Identifier: MIT
// What it costs to load a sample, and to walk over its bases.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

#include "samplestore/CapTrace.h"
#include "samplestore/NewSample.h"
#include "samplestore/RsdFile.h"

namespace {

// A pass over all bases by index: the time is proportional to their number, not to its square.
void PassOverCalledBases(benchmark::State& state) {
    CProcessedTrace trace;
    PeakRecord peak{};
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        peak.position = static_cast<float>(10 * i);
        trace.calledBases.Append(CCalledBase(BaseRecord{'A', 1, 50.0f, nullptr, {}, 0}, {&peak, 1}));
    }
    for (auto _ : state) {
        double sum = 0;
        for (std::int32_t i = 0; i < trace.calledBases.Count(); ++i)
            sum += trace.calledBases.GetPosition(i) + trace.calledBases.GetQuality(i);
        benchmark::DoNotOptimize(sum);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(PassOverCalledBases)->RangeMultiplier(4)->Range(256, 16384)->Complexity(benchmark::oN);

// From the file to the arrays, for several numbers of scans.
void ReadRawSample(benchmark::State& state) {
    const std::string path = (std::filesystem::temp_directory_path() / "lanewright-bench.rsd").string();
    const std::vector<ScanRecord> scans(static_cast<std::size_t>(state.range(0)));
    CSampleInfo info;
    info.version = 1.2f;
    info.scanCount = static_cast<std::uint32_t>(scans.size());
    if (WriteSample(path, info, scans)) state.SkipWithError("cannot write the sample");
    for (auto _ : state) {
        CRsdFile file;
        std::uint32_t count = 0;
        if (file.Open(path, true) || file.ReadInfo(info) || file.GetScanCount(count))
            state.SkipWithError("cannot read the sample");
        std::vector<ScanRecord> read(count);
        if (file.ReadScans(read)) state.SkipWithError("cannot read the scans");
        CRawTrace trace;
        trace.scanCount = count;
        trace.BuildFromScans(read, info.analysis);
        benchmark::DoNotOptimize(trace.channels[0].data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * std::int64_t{scanRecordSize});
    std::filesystem::remove(path);
}
BENCHMARK(ReadRawSample)->Arg(5000)->Arg(20000);

}  // namespace
