// The first lines say on what machine and of which state of the sources the numbers are.
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
    benchmark::AddCustomContext("sizes", "exports: 6000 scans, 600 bases");
    benchmark::RunSpecifiedBenchmarks();
}
