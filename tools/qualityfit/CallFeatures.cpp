// call-features SAMPLE...: the features of every call of raw samples, a line each on standard output, with tabs
// between: the sample's stem, the called letter, then the features in the order of the enumeration. Samples without a
// readable sequence are left out.
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "lanecall/ReadBases.h"
#include "lanecall/Separation.h"
#include "lanecall/Unreadable.h"
#include "samplestore/CapTrace.h"
#include "samplestore/RsdFile.h"

namespace {

// The recorded trace and the letters of its channels; throws std::runtime_error for a file that cannot be read.
lanecall::Recorded ReadSample(const std::string& path) {
    lanecall::Recorded recorded;
    recorded.given = lanecall::Identity();
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
        recorded.curves[c].assign(trace.channels[c].begin(), trace.channels[c].end());
        if (!info.channel[c].base.empty()) recorded.letters[c] = info.channel[c].base.front();
    }
    return recorded;
}

void Print(const std::string& path) {
    const lanecall::Recorded recorded = ReadSample(path);
    const std::string stem = std::filesystem::path(path).stem().string();
    const lanecall::Aligned aligned = lanecall::Align(
        lanecall::SharpenPeaks(
            lanecall::Measure(lanecall::SeparateDyes(lanecall::Prepare(recorded), recorded.letters, recorded.given))),
        recorded.letters);
    const lanecall::MeasuredCalls measured = lanecall::CallAndMeasure(aligned);
    for (std::size_t i = 0; i < measured.calls.size(); ++i) {
        std::printf("%s\t%c", stem.c_str(), recorded.letters[static_cast<std::size_t>(measured.calls[i].channel)]);
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
