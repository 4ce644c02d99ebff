// SPDX-License-Identifier: MIT
// lanetools import: makes plates of raw samples from ABIF files.
//
// The sources are read twice: first to find the plates and their sizes, then to write the samples. So only one of them
// is in memory at a time.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "lanetools/CommonOptions.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/import/AbifDirectory.h"
#include "lanetools/import/InstrumentSample.h"
#include "lanetools/import/PlateFolder.h"
#include "lanetools/import/Sources.h"
#include "lanetools/import/StoreSample.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/system/ToDisk.h"
#include "lanetools/text/SafeName.h"
#include "lanetools/text/StandardOutput.h"
#include "lanetools/text/Utf8.h"
#include "platform/Drives.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr const char* about =
    "Makes plates of raw samples from the ABIF files (.ab1, .abi) of an instrument.\n"
    "\n"
    "A folder means the .ab1 and .abi files directly in it, also compressed ones (.ab1.gz).\n"
    "Each plate becomes a folder\n"
    "  PLATES/<plate>/<plate><well>.rsd\n"
    "Existing samples are safe: one with the same bytes is not touched, and another sample is\n"
    "never replaced.\n"
    "\n"
    "Standard output gets one line for each source, in three columns with tabs between them:\n"
    "source, file written or \"-\", reason or remark.";

constexpr const char* notes =
    "Exit codes: 0 all were imported; 1 nothing could be written; 2 refused, nothing was\n"
    "written; 3 some were not imported; 130 after Ctrl-C.\n"
    "\n"
    "Examples:\n"
    "  lanetools import run1 -o plates\n"
    "  lanetools import old/*.abi --plate batch7 --name file -o plates";

std::string CheckNaming(const std::string& given) {
    return given == "well" || given == "file" ? "" : given + " is neither well nor file";
}

struct COptions {
    std::vector<std::string> arguments;
    std::string root;
    std::string name = "well";
    std::optional<std::string> plateId;
    bool isRecursive = false;
};

// The result for a source.
struct COutcome {
    std::string path = "-";
    std::string remark;  // or the reason
};

void AddRemark(COutcome& outcome, const std::string& remark) {
    if (!outcome.remark.empty() && !remark.empty()) outcome.remark += "; ";
    outcome.remark += remark;
}

// Stores the sample of `place`. A copy of its source, which has another name, leaves it as it is.
Stored StoreAt(const CPlace& place, const CInstrumentSample& sample) {
    if (place.HasOtherSource(sample.info)) {
        CSampleInfo info = sample.info;
        info.sourceFile = place.source;
        if (IsStored(place.path, info, sample.scans)) return Stored::Unchanged;
    }
    return StoreSample(place.path, sample.info, sample.scans, place.isOwn);
}

// Another import may take a place before the sample is stored there; then the sample goes to the next one.
std::pair<CPlace, Stored> StoreInPlace(const CPlateFolder& plate, const std::string& head, const std::string& tail,
                                       const CInstrumentSample& sample) {
    constexpr int mostTries = 10000;  // as many as a plate could ever need
    for (int tries = 0; tries < mostTries; ++tries) {
        const CPlace place = plate.Place(head, tail, sample.info, sample.scans);
        const Stored stored = StoreAt(place, sample);
        if (stored != Stored::Taken) return {place, stored};
    }
    throw CNotStored("all names are taken");
}

class CImport {
  public:
    explicit CImport(const COptions& given) : options(given) {}
    ExitCode Run();

  private:
    CInstrumentSample Read(const CSource& source) const;
    void FindPlates();
    void MakeRoot();
    void Sync();
    COutcome Import(const CSource& source);
    COutcome Store(const CSource& source, CInstrumentSample sample);
    void Print() const;
    ExitCode Result() const;

    const COptions& options;
    std::vector<CSource> sources;
    std::vector<COutcome> outcomes;              // of the sources so far
    std::map<std::string, CPlateFolder> plates;  // by plate id
    std::vector<fs::path> newFolders;            // root and those above it, as far as this import has made them
    bool hasFailedToWrite = false;
};

// The sample with the id of its plate settled. Throws CUnusable.
CInstrumentSample CImport::Read(const CSource& source) const {
    if (!source.refusal.empty()) throw CUnusable(source.refusal);
    const std::string file = ReadSource(source.path);
    CInstrumentSample sample = ReadInstrumentSample(std::as_bytes(std::span(file)));
    sample.info.sourceFile = fs::path(source.path).filename().string();
    std::string& id = sample.info.plateId;
    if (options.plateId) id = *options.plateId;
    if (id.empty()) id = source.folder;
    if (id.empty()) id = "plate";
    return sample;
}

void CImport::FindPlates() {
    std::set<std::string> taken;
    CProgress progress("files read", sources.size());
    for (CSource& source : sources) {
        CheckInterrupt();
        progress.Step();
        if (source.sameAs) continue;
        try {
            const CSampleInfo info = Read(source).info;
            auto plate = plates.find(info.plateId);
            if (plate == plates.end())
                plate = plates.emplace(info.plateId, CPlateFolder(options.root, info.plateId, taken)).first;
            plate->second.AddWell(info.wellId);
        } catch (const CUnusable& unusable) {
            source.refusal = unusable.what();
        }
    }
}

void CImport::MakeRoot() {
    std::error_code error;
    for (fs::path folder = fs::absolute(options.root); !fs::exists(folder, error); folder = folder.parent_path())
        newFolders.push_back(folder);
    fs::create_directories(options.root, error);
    if (error) throw CRefused(options.root + ": " + error.message());
}

// Brings the names of all samples to the disk; their bytes are there already. Until then none is reported.
void CImport::Sync() {
    std::map<fs::path, std::string> samples;  // by folder, one that is in it or below it
    for (const COutcome& outcome : outcomes) {
        if (outcome.path == "-") continue;
        samples.emplace(options.root, outcome.path);
        samples.emplace(fs::path(outcome.path).parent_path(), outcome.path);
        for (const fs::path& folder : newFolders)
            samples.emplace(folder.parent_path(), outcome.path);
    }
    for (const auto& [folder, sample] : samples)
        SyncNamesIn(folder.string(), sample);
}

COutcome CImport::Store(const CSource& source, CInstrumentSample sample) {
    CSampleInfo& info = sample.info;
    const auto found = plates.find(info.plateId);
    if (found == plates.end()) throw CUnusable("changed while it was imported");
    const CPlateFolder& plate = found->second;
    info.plateColumns = plate.Columns();
    info.plateRows = plate.Rows();

    COutcome outcome{"-", sample.remark};
    if (plate.IsPlainTaken()) AddRemark(outcome, "the folder name " + SafeName(info.plateId) + " is taken");
    const std::string well = options.name == "well" ? info.wellId : "";
    std::string head = SafeName(options.name == "well" ? info.plateId : source.stem);
    if (options.name == "well" && well.empty()) {
        head.append("_").append(SafeName(source.stem));
        AddRemark(outcome, sample.wellText.empty() ? "no well" : "no well: \"" + sample.wellText + "\"");
    }
    const auto [place, stored] = StoreInPlace(plate, head, well, sample);
    if (place.isPlainTaken) AddRemark(outcome, (well.empty() ? "the name " + head : "well " + well) + " is taken");
    if (stored == Stored::Updated) AddRemark(outcome, "updated");
    if (stored == Stored::Unchanged)
        AddRemark(outcome, "already imported" + (place.HasOtherSource(info) ? " as " + place.source : ""));
    outcome.path = place.path;
    return outcome;
}

COutcome CImport::Import(const CSource& source) {
    if (source.sameAs) {
        COutcome outcome = outcomes[*source.sameAs];
        outcome.remark = "the same file as " + sources[*source.sameAs].path;
        return outcome;
    }
    try {
        return Store(source, Read(source));
    } catch (const CUnusable& unusable) {
        return {"-", unusable.what()};
    } catch (const CNotStored& notStored) {
        hasFailedToWrite = true;
        return {"-", std::string("cannot be written: ") + notStored.what()};
    }
}

void CImport::Print() const {
    const auto column = [](const std::string& text) { return OneLine(ToUtf8(text)); };
    std::string lines;
    for (std::size_t i = 0; i < outcomes.size(); ++i)
        lines += column(sources[i].path) + '\t' + column(outcomes[i].path) + '\t' + column(outcomes[i].remark) + '\n';
    WriteStandardOutput(lines);
}

ExitCode CImport::Result() const {
    const auto isMissing = [](const COutcome& outcome) { return outcome.path == "-"; };
    if (std::none_of(outcomes.begin(), outcomes.end(), isMissing)) return ExitCode::Done;
    const bool isAllMissing = std::all_of(outcomes.begin(), outcomes.end(), isMissing);
    return isAllMissing && hasFailedToWrite ? ExitCode::Failed : ExitCode::Incomplete;
}

ExitCode CImport::Run() {
    sources = FindSources(options.arguments, options.isRecursive);
    FindPlates();
    if (!plates.empty()) MakeRoot();
    try {
        CProgress progress("files imported", sources.size());
        for (const CSource& source : sources) {
            CheckInterrupt();
            outcomes.push_back(Import(source));
            progress.Step();
        }
    } catch (const CInterrupted&) {
        Sync();
        Print();
        throw;
    }
    Sync();
    Print();
    return Result();
}

}  // namespace

CSubcommand AddImport(CLI::App& tools) {
    CLI::App* app = tools.add_subcommand("import", about);
    const auto options = std::make_shared<COptions>();
    app->footer(notes);
    app->add_option("FILES-OR-FOLDERS", options->arguments, "Files and folders")
        ->required()
        ->check(NotEmpty())
        ->type_name("FILES-OR-FOLDERS");
    app->add_option("-o,--output", options->root, "Folder for the plates; created if it does not exist")
        ->required()
        ->check(NotEmpty())
        ->type_name("PLATES");
    app->add_option("--name", options->name, "Name the samples by plate and well, or keep the\nnames of the files")
        ->check(CLI::Validator(CheckNaming, ""))
        ->type_name("well|file")
        ->capture_default_str();
    app->add_flag("-r,--recursive", options->isRecursive, "Also import the files in folders below");
    app->add_option("--plate", options->plateId, "Take all files for samples of this plate, whichever\nplate they name")
        ->type_name("ID");
    return {app, [options] {
                if (options->plateId && options->plateId->empty()) throw CRefused("--plate: the id is empty");
                if (platform::NativePath(options->root) != options->root)
                    throw CRefused(options->root + ": a folder of plates must not have \"\\\" or a drive in its path");
                return CImport(*options).Run();
            }};
}

}  // namespace lanetools
