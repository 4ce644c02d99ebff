// SPDX-License-Identifier: MIT
// lanetools summary: one row per sample, checked on the way.
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <vector>

#include "lanetools/CommonOptions.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/samples/Inputs.h"
#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/Summarize.h"
#include "lanetools/samples/Target.h"
#include "lanetools/samples/Unread.h"
#include "lanetools/summary/Reports.h"
#include "lanetools/system/ToDisk.h"
#include "lanetools/text/StandardOutput.h"
#include "platform/AtomicFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

struct CSummaryOptions {
    std::vector<std::string> outputs, raw;
    std::string format = "tsv", target;
    double minPass = 100;
};

constexpr const char* about =
    "Sums up what the program stored: one row per sample, with its state and figures.\n"
    "Each stored sample is verified on the way, and nothing is changed.\n"
    "\n"
    "An OUT is an output root, or a folder with stored samples. With --raw, samples\n"
    "without a result show as missing; a PLATES is a folder with raw samples, or one\n"
    "with such folders.";

constexpr const char* notes =
    "Exit codes: 0 all samples are called (or --min-pass percent of them), 1 could not be\n"
    "done, 2 refused or nothing found, 3 samples are missing, failed or damaged or\n"
    "something could not be read, 130 Ctrl-C.\n"
    "\n"
    "Examples:\n"
    "  lanetools summary analyzed\n"
    "  lanetools summary analyzed --raw plates --min-pass 95 -o summary.tsv\n"
    "  lanetools summary analyzed --raw plates --format multiqc -o report";

// Where the report goes. It is opened before the samples are read, so that a target that cannot be written costs no
// time.
class CTarget {
  public:
    // `path` is empty for standard output. Throws CRefused.
    CTarget(const std::string& format, const std::string& path) : target(path), isFolder(format == "multiqc") {
        if (isFolder)
            MakeFolder();
        else if (!target.empty())
            OpenFile();
    }
    // Throws std::runtime_error if it cannot be written.
    void Write(std::string_view text) {
        if (target.empty()) {
            WriteStandardOutput(text);
            return;
        }
        file.Write(text);
        CommitToDisk(file, target);
    }
    void Write(const std::vector<CReportFile>& files) {
        for (const CReportFile& one : files) {
            const std::string path = (fs::path(target) / one.name).string();
            platform::AtomicFile report;
            std::ignore = report.Open(path);  // an error comes back below
            report.Write(one.text);
            CommitToDisk(report, path);
        }
    }

  private:
    void OpenFile() {
        target = ResolveTarget(target);
        if (const auto error = file.Open(target)) throw CRefused(target + ": " + error.Text());
    }
    void MakeFolder() {
        if (target.empty()) throw CRefused("--format multiqc writes several files: -o names a folder for them");
        std::error_code error;
        MakeFolderOnDisk(target, error);
        if (error) throw CRefused(target + ": " + error.message());
        if (!fs::is_directory(target, error)) throw CRefused(target + ": is not a folder");
    }

    std::string target;
    bool isFolder;
    platform::AtomicFile file;
};

ExitCode Judge(const std::vector<CSampleRow>& rows, double minPass) {
    const CStateCounts counts = CountStates(rows);
    if (counts.Passes(minPass)) return ExitCode::Done;
    std::fprintf(stderr, "lanetools: %zu of %zu samples are called (%zu failed, %zu missing, %zu damaged)\n",
                 counts.called, counts.All(), counts.failed, counts.missing, counts.damaged);
    return ExitCode::Incomplete;
}

ExitCode RunSummary(const CSummaryOptions& options) {
    const CInputs inputs = FindInputs(options.outputs, options.raw);
    CTarget target(options.format, options.target);
    const std::vector<CSampleRow> rows = Summarize(inputs.outputs, inputs.plates);
    if (options.format == "multiqc")
        target.Write(MultiqcReport(rows));
    else
        target.Write(options.format == "json" ? JsonReport(rows) : TsvReport(rows));
    Unread unread = UnreadOf(rows);
    unread.insert(unread.end(), inputs.unread.begin(), inputs.unread.end());
    ShowUnread(unread);
    const ExitCode code = Judge(rows, options.minPass);
    return unread.empty() ? code : ExitCode::Incomplete;
}

}  // namespace

CSubcommand AddSummary(CLI::App& tools) {
    const auto options = std::make_shared<CSummaryOptions>();
    CLI::App* app = tools.add_subcommand("summary", about);
    app->footer(notes);
    app->add_option("OUT", options->outputs, "Folders with results")->required()->check(PlainPath())->type_name("OUT");
    app->add_option("--raw", options->raw, "Raw samples that must have results")
        ->check(PlainPath())
        ->type_name("PLATES...");
    app->add_option("--format", options->format, "tsv, json or multiqc")
        ->check(CLI::IsMember({"tsv", "json", "multiqc"}))
        ->type_name("FORMAT")
        ->capture_default_str();
    app->add_option("-o,--output", options->target,
                    "File for the report instead of standard output;\nfor multiqc a folder")
        ->check(PlainPath())
        ->type_name("PATH");
    AddMinPass(*app, options->minPass);
    return {app, [options] { return RunSummary(*options); }};
}

}  // namespace lanetools
