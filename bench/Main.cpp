// SPDX-License-Identifier: MIT
// The first lines of the output name the processor, the commit and the sizes that the numbers belong to.
#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

namespace {

std::string Processor() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);)
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    return "unknown";
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::AddCustomContext("CPU", Processor());
    benchmark::AddCustomContext("commit", LANEWRIGHT_COMMIT);
    benchmark::AddCustomContext(
        "sizes", "exports and the tree: 600 bases, 6000 scans; stages of Lanecall: 600 bases, 9300 scans");
    benchmark::RunSpecifiedBenchmarks();
}
