// SPDX-License-Identifier: MIT
#include <htslib/hts_log.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "lanetools/CommonOptions.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/export/ExportOptions.h"
#include "lanetools/export/ReadCollection.h"
#include "lanetools/export/ReadFile.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/samples/Unread.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/system/ToDisk.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr const char* about =
    "Writes the reads of stored samples to files that other programs read.\n"
    "\n"
    "OUT is a folder of results, or a folder of such folders. Qualities are taken from the\n"
    "stored samples as they are, and rounded once. Samples that failed or are damaged are\n"
    "not exported, but reported.";

constexpr const char* notes =
    "Columns for --name and --files: those of lanetools summary.\n"
    "\n"
    "Exit codes:\n"
    "  0    all samples were exported, or were too short\n"
    "  1    a file could not be written\n"
    "  2    refused before anything was written\n"
    "  3    done, but samples failed or are damaged, or something could not be read\n"
    "  130  interrupted; all files that exist are complete\n"
    "\n"
    "Examples:\n"
    "  lanetools export out -o reads --format fastq --trim mott:0.05 --gzip\n"
    "  lanetools export out -o reads --format bam --per run --name '{sample}_{well}'";

void AddFileOptions(CLI::App& app, CExportOptions& options) {
    app.add_option("OUT", options.outputs, "Folders of stored samples")
        ->required()
        ->check(PlainPath())
        ->type_name("OUT");
    app.add_option("-o,--output", options.folder, "Folder for the files; created if it does not exist")
        ->required()
        ->check(PlainPath())
        ->type_name("DIR");
    app.add_option("--format", options.format, "fastq, fasta, qual, phd, sam or bam")->required()->type_name("FORMAT");
    app.add_option("--per", options.per, "One file per sample, per plate, or for the whole run")
        ->type_name("sample|plate|run")
        ->capture_default_str();
    app.add_flag("--gzip", options.gzip, "Compress the files; not for bam");
    app.add_option("--cap", options.cap, "Highest Phred value, up to 93")->type_name("N")->capture_default_str();
}

void AddReadOptions(CLI::App& app, CExportOptions& options) {
    const char* group = "Reads";
    app.add_option("--trim", options.trim,
                   "Part to keep: mott:LIMIT (probability of an error),\nwindow:W,Q (windows of W, mean Phred Q), good "
                   "or none")
        ->type_name("HOW")
        ->capture_default_str()
        ->group(group);
    app.add_flag("--mask", options.mask, "Lower case instead of cutting; not for sam and bam")->group(group);
    AddMixedRatio(app, "--mixed", options.mixed,
                  "IUPAC letters where a second letter has this part of the\nstrength of the strongest")
        ->group(group);
    app.add_option("--min-length", options.minLength, "Write no read of which fewer bases are kept")
        ->type_name("N")
        ->capture_default_str()
        ->group(group);
    app.add_option("--adapter", options.adapter, "Adapter to remove, in IUPAC letters, on either strand")
        ->type_name("LETTERS")
        ->group(group);
    app.add_option("--adapter-mismatch", options.adapterMismatch, "Part of its letters that may differ")
        ->type_name("PART")
        ->capture_default_str()
        ->group(group);
    app.add_option("--name", options.name, "Pattern of the titles, such as '{sample}_{well}' [{file}]")
        ->type_name("PATTERN")
        ->group(group);
    app.add_option("--files", options.files, "Pattern of the files' names, as for --name")
        ->type_name("PATTERN")
        ->group(group);
    app.add_option("--sheet", options.sheet,
                   "Table with the columns plate, well and name, for titles\nand, with --files, for files")
        ->check(NotEmpty())
        ->type_name("FILE")
        ->group(group);
}

void AddOne(const COutputFolder& output, const std::string& file, CReadCollection& reads) {
    try {
        reads.Add(output, ReadStoredSample(file));
    } catch (const std::bad_alloc&) {
        reads.Add(output, UnreadSample(file, NoMemory()));
    }
}

void ReadAll(const std::vector<COutputFolder>& outputs, CReadCollection& reads, CProgress& progress) {
    for (const COutputFolder& output : outputs) {
        for (const std::string& file : output.files) {
            CheckInterrupt();
            AddOne(output, file, reads);
            progress.Step();
        }
    }
    reads.ReportSheet();
}

std::size_t WriteAll(const CReadCollection& collection, const CExportOptions& options) {
    CProgress progress("files", collection.Files().size());
    const ReadFormat format = ParseFormat(options);
    std::size_t count = 0;
    const std::string* last = nullptr;
    for (const auto& [path, reads] : collection.Files()) {
        CheckInterrupt();
        std::error_code error;
        const fs::path folder = fs::path(path).parent_path();
        fs::create_directories(folder, error);
        if (error) throw std::runtime_error(folder.string() + ": " + error.message());
        if (reads.empty()) continue;  // there was no memory for the only one
        WriteReads(path, format, options.gzip, reads);
        count += reads.size();
        last = &path;
        progress.Step();
    }
    // One wait for all files, of which there may be thousands.
    if (last) SyncVolumeOf(*last);
    return count;
}

ExitCode Export(const CExportOptions& options) {
    hts_set_log_level(HTS_LOG_OFF);  // errors are reported with the path that the user knows
    Unread unread;
    const std::vector<COutputFolder> outputs = FindOutputs(options.outputs, unread);
    std::size_t samples = 0;
    for (const COutputFolder& output : outputs)
        samples += output.files.size();
    CProgress progress("samples", samples);
    CReadCollection reads(options, outputs, [&](const std::string& message) { progress.Say(message); });
    ReadAll(outputs, reads, progress);
    ShowUnread(unread);
    const std::size_t written = WriteAll(reads, options);
    progress.Say("reads written: " + std::to_string(written) + ", too short: " + std::to_string(reads.TooShort()) +
                 ", not exported: " + std::to_string(reads.NotExported()));
    return reads.NotExported() > 0 || !unread.empty() ? ExitCode::Incomplete : ExitCode::Done;
}

}  // namespace

CSubcommand AddExport(CLI::App& tools) {
    CLI::App* app = tools.add_subcommand("export", about);
    app->footer(notes);
    const auto options = std::make_shared<CExportOptions>();
    AddFileOptions(*app, *options);
    AddReadOptions(*app, *options);
    return {app, [options] { return Export(*options); }};
}

}  // namespace lanetools
