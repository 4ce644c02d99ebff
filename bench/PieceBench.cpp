// SPDX-License-Identifier: MIT
// What single pieces cost: the property tree, the encoding of exported files, and one guarded call into a library.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/Guest.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/PropertyItem.h"
#include "samplestore/PropertyKeys.h"
#include "samplestore/SampleFile.h"

namespace {

constexpr std::size_t scans = 6000;
constexpr std::size_t baseCount = 600;

CSampleInfo CalledInfo() {
    CSampleInfo info;
    info.plateId = "plate";
    CAnalysisInfo& analysis = info.analysis;
    analysis.basesCalled = static_cast<std::int16_t>(baseCount);
    for (std::size_t i = 0; i < baseCount; ++i) {
        analysis.sequence += "ACGT"[i % 4];
        analysis.peakPositions.push_back(static_cast<std::int32_t>(10 * i));
        analysis.qualityScores.push_back(99.5f);
        analysis.descriptors.push_back(0);
        analysis.strengths.push_back({1, 0, 0, 0});
    }
    analysis.endTrace = scans;
    return info;
}

void StoreTree(benchmark::State& state) {
    const CSampleInfo info = CalledInfo();
    for (auto _ : state) {
        std::vector<std::uint8_t> tree{property::endMarkerByte};
        std::size_t tail = 0;
        if (!StoreKeys(tree, tail, info)) state.SkipWithError("not stored");
        benchmark::DoNotOptimize(tail);
    }
}
BENCHMARK(StoreTree);

void ReadTree(benchmark::State& state) {
    const CSampleInfo info = CalledInfo();
    std::vector<std::uint8_t> tree{property::endMarkerByte};
    std::size_t tail = 0;
    if (!StoreKeys(tree, tail, info)) state.SkipWithError("not stored");
    CSampleInfo read;
    for (auto _ : state)
        ReadKeys(tree, read);
    if (read.analysis.sequence != info.analysis.sequence || read.analysis.strengths.size() != baseCount)
        state.SkipWithError("read something else");
}
BENCHMARK(ReadTree);

// Discards what the operations print.
class Silence {
  public:
    Silence() : output(::dup(STDOUT_FILENO)) {
        const int nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
    }
    ~Silence() {
        ::dup2(output, STDOUT_FILENO);
        ::close(output);
    }

  private:
    int output;
};

// A called sample in a folder of its own, and its exports.
class ExportBench : public benchmark::Fixture {
  public:
    void SetUp(benchmark::State& state) override {
        folder = (std::filesystem::temp_directory_path() / "lanewright-bench").string();
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        driver = std::make_unique<CRunDriver>(1);
        driver->unattended = 1;
        driver->baseCallers = std::make_unique<CBaseCallerSet>(driver.get());
        plate = std::make_unique<CPlate>(folder, std::vector<CFileTypeFilter>{}, driver.get());
        plate->outputFolder = folder;
        sample = std::make_unique<CSampleFile>("s.rsd", plate.get());
        sample->info = CalledInfo();
        std::vector<ScanRecord> records(scans);
        for (std::size_t i = 0; i < scans; ++i)
            for (std::size_t k = 0; k < channelCount; ++k)
                records[i].words[k + 1] =
                    static_cast<std::uint32_t>(4000 + 3000 * std::sin(0.1 * static_cast<double>(i + k)));
        Fill(*sample->CreateProcessedTrace(folder + "/s.rsd", 0, nullptr)->trace, records);
        for (ScanRecord& record : records)
            for (std::size_t k = 0; k < channelCount; ++k)
                record.SetFloat(static_cast<int>(k) + 1, static_cast<float>(record.words[k + 1]));
        Fill(*sample->CreateProcessedTrace(folder + "/s.esd", 1, nullptr)->trace, records);
        if (sample->processedTrace->Processed()->calledBases.Count() != static_cast<std::int32_t>(baseCount))
            state.SkipWithError("no bases");
    }
    void TearDown(benchmark::State&) override {
        sample.reset();
        std::filesystem::remove_all(folder);
    }

  protected:
    void Fill(CCapTrace& trace, const std::vector<ScanRecord>& records) const {
        trace.scanCount = static_cast<std::uint32_t>(records.size());
        trace.BuildFromScans(records, sample->info.analysis);
    }
    // Every export adds to the two logs too; they are removed before each, so that they do not grow.
    template <class Export>
    void Run(benchmark::State& state, const std::string& file, std::uintmax_t least, Export run) {
        const Silence silence;
        for (auto _ : state) {
            state.PauseTiming();
            std::filesystem::remove(folder + "/log.xml");
            std::filesystem::remove(folder + "/basecall.log");
            state.ResumeTiming();
            if (run() != 1) state.SkipWithError("not exported");
        }
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(folder + file, error);
        if (error || size < least) state.SkipWithError("the file is not as long as it should be");
        state.counters["file_bytes"] = static_cast<double>(size);
    }

    std::string folder;
    std::unique_ptr<CRunDriver> driver;
    std::unique_ptr<CPlate> plate;
    std::unique_ptr<CSampleFile> sample;
};

BENCHMARK_F(ExportBench, Scf)(benchmark::State& state) {
    Run(state, "/SCF/s.scf", 128 + 8 * scans + 12 * baseCount,
        [&] { return sample->ExportScf(*sample->processedTrace); });
}
BENCHMARK_F(ExportBench, Abd)(benchmark::State& state) {
    Run(state, "/ABD/s.abd", 18 * scans - 18, [&] { return sample->ExportAbd(*sample->processedTrace, 0); });
}
BENCHMARK_F(ExportBench, Fasta)(benchmark::State& state) {
    Run(state, "/FASTA/s.seq", baseCount, [&] { return sample->ExportFasta(sample->processedTrace, "", 0); });
}

// What a guarded call costs in addition to the library's own work.
void GuardedCall(benchmark::State& state) {
    for (auto _ : state)
        platform::GuestCall("library.so", "sample.rsd");
}
BENCHMARK(GuardedCall);

}  // namespace
