// SPDX-License-Identifier: MIT
#include "samplegen/Plate.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <stdexcept>

#include "platform/Error.h"
#include "platform/Files.h"
#include "plugins/ScanRate.h"
#include "samplegen/Description.h"
#include "samplegen/Dyes.h"
#include "samplegen/HardWell.h"
#include "samplegen/Random.h"
#include "samplegen/Read.h"
#include "samplegen/Trace.h"
#include "samplegen/Troubles.h"
#include "samplestore/NewSample.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace samplegen {

namespace {

void Require(platform::Error error, const std::string& path) {
    if (error) throw std::runtime_error("cannot write " + path + ": " + error.Text());
}

void WriteText(const std::string& path, const std::string& text) {
    platform::File file;
    Require(file.Open(path, platform::OpenMode::CreateOrEmpty), path);
    Require(file.Write(text), path);
    Require(file.Close(), path);
}

// Chooses at random which wells fail and which are saturated.
std::vector<WellKind> DrawKinds(const Options& options) {
    CRandom random(options.seed, 0);
    std::vector<WellKind> kinds(static_cast<std::size_t>(options.wells), WellKind::good);
    std::vector<std::size_t> left(kinds.size());
    std::iota(left.begin(), left.end(), std::size_t{0});
    for (int i = 0; i < options.failedWells + options.saturatedWells; ++i) {
        const auto drawn = static_cast<std::ptrdiff_t>(random.Below(static_cast<int>(left.size())));
        kinds[left[static_cast<std::size_t>(drawn)]] = i < options.failedWells ? WellKind::failed : WellKind::saturated;
        left.erase(left.begin() + drawn);
    }
    return kinds;
}

std::string FastaRecord(const std::string& name, const std::string& bases) {
    constexpr std::size_t lineLength = 60;
    std::string record = ">" + name + " " + std::to_string(bases.size()) + " bases\n";
    for (std::size_t at = 0; at < bases.size(); at += lineLength)
        record += bases.substr(at, lineLength) + "\n";
    return record;
}

// The random stream of a well. It depends on row and column only, so it is the same on plates of both sizes.
std::uint64_t WellStream(int well, int wells) {
    const auto row = static_cast<std::uint64_t>(well / PlateColumns(wells));
    const auto column = static_cast<std::uint64_t>(well % PlateColumns(wells));
    return 100 * row + column + 1;
}

// Further random streams of a well: one for the troubles in its trace, one for the settings of a hard well.
enum class Further : std::uint64_t { troubles = 1, hardWell = 2 };

std::uint64_t FurtherStream(std::uint64_t wellStream, Further kind) {
    return 10000 * static_cast<std::uint64_t>(kind) + wellStream;
}

Troubles TroublesOf(const Options& options, int well) {
    if (!options.hard) return options.troubles;
    CRandom random(options.seed, FurtherStream(WellStream(well, options.wells), Further::hardWell));
    return DrawTroubles(options.bases, ScanRateHz(options.scanRate), random);
}

// The cross-talk that the samples and the dye matrix file state.
Matrix4 StatedMatrix(const Troubles& troubles) {
    return CrossTalk(troubles.matrixKnown ? troubles.crossTalk : 0);
}

// Writes the sample of one well and returns its bases.
std::string WriteWell(const Options& options, const Troubles& troubles, int well, WellKind kind,
                      const std::string& path) {
    const double scansPerSecond = ScanRateHz(options.scanRate);
    const std::uint64_t stream = WellStream(well, options.wells);
    WellRandom random{CRandom(options.seed, stream), CRandom(options.seed, FurtherStream(stream, Further::troubles))};
    const Read read = MakeRead(options, troubles, kind, scansPerSecond, random);
    const std::vector<ScanRecord> scans = RecordRun(read, troubles, scansPerSecond, random.read);
    const CSampleInfo info = DescribeSample(options, well, StatedMatrix(troubles), scans, scansPerSecond);
    Require(options.tree ? WriteSample(path, info, scans) : WriteBareSample(path, info, scans), path);
    return read.bases;
}

}  // namespace

PlateReport WritePlate(const Options& options) {
    const platform::Error made = platform::MakeDirectory(options.folder);
    if (made != EEXIST) Require(made, options.folder);
    const std::vector<WellKind> kinds = DrawKinds(options);
    PlateReport report;
    std::string truth, troublesText;
    for (int well = 0; well < options.wells; ++well) {
        const WellKind kind = kinds[static_cast<std::size_t>(well)];
        const std::string wellName = WellName(well, options.wells);
        const std::string name = options.plate + wellName;
        const Troubles troubles = TroublesOf(options, well);
        const std::string path = options.folder + "/" + name + "." + options.form;
        const std::string bases = WriteWell(options, troubles, well, kind, path);
        troublesText += name + ": " + TroublesText(troubles) + "\n";
        if (kind != WellKind::failed) truth += FastaRecord(name, bases);
        if (kind == WellKind::failed) report.failed.push_back(wellName);
        if (kind == WellKind::saturated) report.saturated.push_back(wellName);
    }
    WriteText(options.folder + "/truth.fasta", truth);
    if (options.hard) WriteText(options.folder + "/troubles.txt", troublesText);
    const bool isStated = !options.hard && options.troubles.matrixKnown;
    const Matrix4 matrix = CrossTalk(isStated ? options.troubles.crossTalk : 0);
    WriteText(options.folder + "/dyeMethod1.ini", DyeMatrixText(options.baseOrder, matrix));
    return report;
}

}  // namespace samplegen
