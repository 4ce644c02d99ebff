// SPDX-License-Identifier: MIT
// What an entry in the mark-up log of a plate costs, depending on how many samples it already lists.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "export/Formats.h"
#include "run/Plate.h"

namespace {

constexpr Format written[] = {Format::Sample, Format::Abd, Format::Scf, Format::Fasta};

std::string FilePath(std::int64_t sample, Format format) {
    return "/data/results/plate_LC1_QX1/run1" + std::to_string(10000 + sample) + '.' +
           std::string(formats.at(static_cast<std::size_t>(format)).tag);
}

// A log.xml that lists these files of so many samples.
void WriteMarkupLog(const std::string& path, std::int64_t samples) {
    std::ofstream out(path, std::ios::binary);
    out << "<log>\t\t\r\n<files>\t\t\r\n";
    for (const Format format : written) {
        const std::string tag(formats.at(static_cast<std::size_t>(format)).tag);
        out << '<' << tag << ">\r\n";
        for (std::int64_t i = 0; i < samples; ++i)
            out << FilePath(i, format) << "\t\t\r\n";
        out << "</" << tag << ">\t\t\r\n";
    }
    out << "<txt>\r\n\r\n</txt>\t\t\r\n</files>\t\t\r\n</log>\t\t\r\n";
}

std::string EmptyFolder() {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "lanewright-bench";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    return folder.string();
}

// True for a log of so many entries, `last` among them.
bool LinesHave(const std::string& path, const std::string& last, std::int64_t entries) {
    std::ifstream log(path, std::ios::binary);
    std::int64_t count = 0;
    bool isThere = false;
    for (std::string line; std::getline(log, line);) {
        if (line.starts_with('/')) ++count;
        isThere = isThere || line.starts_with(last);
    }
    return isThere && count == entries;
}

// The four entries of a sample.
void MarkupLogOfOneMoreSample(benchmark::State& state) {
    const std::string folder = EmptyFolder();
    WriteMarkupLog(folder + "/log.xml", state.range(0));
    CPlate plate(folder, {}, nullptr);
    std::int64_t sample = state.range(0);
    for (auto _ : state) {
        for (const Format format : written)
            plate.AddToMarkupLog(FilePath(sample, format), SectionOf(format));
        ++sample;
    }
    if (!LinesHave(folder + "/log.xml", FilePath(sample - 1, Format::Fasta), 4 * sample))
        state.SkipWithError("the log lacks entries");
    std::filesystem::remove_all(folder);
}
BENCHMARK(MarkupLogOfOneMoreSample)->Arg(100)->Arg(10000)->Iterations(100)->Unit(benchmark::kMicrosecond);

}  // namespace
