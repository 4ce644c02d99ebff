// SPDX-License-Identifier: MIT
// call-features SAMPLE...: calls the bases of raw samples and prints one line per call, with tabs between the fields:
// the sample's name without folder and extension, the called letter, and the features in the order of the enumeration
// Feature. A sample from which no bases can be called is reported on standard error and has no lines. The exit code is
// 1 if a file cannot be read.
#include <array>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "lanecall/Align.h"
#include "lanecall/Curves.h"
#include "lanecall/Measure.h"
#include "lanecall/Prepare.h"
#include "lanecall/ReadBases.h"
#include "lanecall/SeparateDyes.h"
#include "lanecall/Separation.h"
#include "lanecall/Unreadable.h"
#include "samplestore/CapTrace.h"
#include "samplestore/RsdFile.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace {

struct Sample {
    lanecall::Recorded recorded;
    lanecall::Letters letters{'A', 'C', 'T', 'G'};  // where the file does not say otherwise
};

// Throws std::runtime_error for a file that cannot be read.
Sample ReadSample(const std::string& path) {
    Sample sample;
    CRsdFile file;
    CSampleInfo info;
    std::uint32_t count = 0;
    if (file.Open(path, true) || file.ReadInfo(info) || file.GetScanCount(count))
        throw std::runtime_error("cannot be read");
    std::vector<ScanRecord> scans(count);
    if (file.ReadScans(scans)) throw std::runtime_error("the scans cannot be read");
    CRawTrace trace;
    trace.scanCount = count;
    trace.BuildFromScans(std::move(scans), info.analysis);
    for (std::size_t c = 0; c < lanecall::channelCount; ++c) {
        sample.recorded.curves[c].assign(trace.channels[c].begin(), trace.channels[c].end());
        if (!info.channel[c].base.empty()) sample.letters[c] = info.channel[c].base.front();
    }
    return sample;
}

void Print(const std::string& path) {
    const auto [recorded, letters] = ReadSample(path);
    const std::string stem = std::filesystem::path(path).stem().string();
    const lanecall::Aligned aligned = lanecall::Align(lanecall::SharpenPeaks(lanecall::Measure(lanecall::SeparateDyes(
                                                          lanecall::Prepare(recorded), letters, lanecall::Identity()))),
                                                      letters);
    const lanecall::MeasuredCalls measured = lanecall::CallAndMeasure(aligned);
    for (std::size_t i = 0; i < measured.calls.size(); ++i) {
        std::printf("%s\t%c", stem.c_str(), letters[static_cast<std::size_t>(measured.calls[i].channel)]);
        for (double feature : measured.features[i])
            std::printf("\t%.5g", feature);
        std::putchar('\n');
    }
}

}  // namespace

int main(int argc, char** argv) {
    int exitCode = 0;
    for (int i = 1; i < argc; ++i) {
        try {
            Print(argv[i]);
        } catch (const lanecall::CUnreadable& failure) {
            std::fprintf(stderr, "call-features: %s: %s\n", argv[i], failure.what());
        } catch (const std::exception& error) {
            std::fprintf(stderr, "call-features: %s: %s\n", argv[i], error.what());
            exitCode = 1;
        }
    }
    return exitCode;
}
