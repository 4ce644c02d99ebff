// SPDX-License-Identifier: MIT
// lanetools import with a file of the instrument, as the user runs it: the file becomes one sample that can be read,
// and the same import again finds it, or nothing is written.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/samples/RawPlate.h"

namespace {

lanetools::ExitCode Import(const std::string& source, const std::string& plates) {
    CLI::App tools;
    const lanetools::CSubcommand import = lanetools::AddImport(tools);
    tools.parse(std::vector<std::string>{plates, "-o", source, "import"});  // from the last word to the first
    return import.run();
}

std::vector<std::string> Samples(const std::string& plates) {
    std::vector<std::string> samples;
    if (std::filesystem::exists(plates))
        for (const auto& entry : std::filesystem::recursive_directory_iterator(plates))
            if (entry.is_regular_file()) samples.push_back(entry.path());
    return samples;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto& folder = fuzz::Folder();
    const std::string source = folder.Write("run/x.ab1", fuzz::Text(data, size)), plates = folder.Path("plates");
    const lanetools::ExitCode code = Import(source, plates);
    const std::vector<std::string> samples = Samples(plates);
    fuzz::Demand(code == lanetools::ExitCode::Done || code == lanetools::ExitCode::Incomplete);
    fuzz::Demand(samples.size() == (code == lanetools::ExitCode::Done ? 1 : 0));
    for (const std::string& sample : samples) {
        fuzz::Demand(lanetools::ReadRawSample(sample, "").reason.empty());
    }
    fuzz::Demand(Import(source, plates) == code && Samples(plates) == samples);
    std::filesystem::remove_all(folder.Path());
    return 0;
}
