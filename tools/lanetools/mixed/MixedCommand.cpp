// SPDX-License-Identifier: MIT
// lanetools mixed: the places where reads have more than one letter.
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/CommonOptions.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/samples/CallFigures.h"
#include "lanetools/samples/MixedPlaces.h"
#include "lanetools/samples/Phred.h"
#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/samples/Target.h"
#include "lanetools/samples/Unread.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/system/ToDisk.h"
#include "lanetools/text/StandardOutput.h"
#include "lanetools/text/Utf8.h"
#include "platform/AtomicFile.h"

namespace lanetools {

namespace {

struct CMixedOptions {
    std::vector<std::string> outputs;
    std::optional<double> ratio;
    bool isWhole = false;
    std::string target;
};

constexpr const char* about =
    "Lists the places where reads have a second letter: mixed alleles or templates.\n"
    "\n"
    "One line per place, with tabs between plate, well, file, base (from 1), the IUPAC\n"
    "letter, its letters with the strongest first, the ratio of the second to the\n"
    "strongest, and the quality of the called base (Phred). Only the good region of each\n"
    "read is looked at.";

constexpr const char* notes =
    "Exit codes: 0 all samples were looked at, 1 could not be done, 2 refused or nothing\n"
    "found, 3 samples failed, are damaged or cannot be read, 130 Ctrl-C.\n"
    "\n"
    "Examples:\n"
    "  lanetools mixed out\n"
    "  lanetools mixed out --ratio 0.25 -o mixed.tsv";

std::string LineOf(const CSampleRow& row, const CAnalysisInfo& analysis, const CMixedPlace& place) {
    char figures[64];
    std::snprintf(figures, sizeof figures, "\t%.2f\t%.0f\n", place.ratio, Phred(analysis.qualityScores[place.base]));
    return OneLine(row.plate) + "\t" + OneLine(row.well) + "\t" + OneLine(row.file) + "\t" +
           std::to_string(place.base + 1) + "\t" + place.code + "\t" + place.letters + figures;
}

std::string LinesOf(const CStoredSample& sample, const COutputFolder& output, const CMixedOptions& options) {
    const CAnalysisInfo& analysis = sample.info.analysis;
    const CStretch all{0, static_cast<std::size_t>(analysis.basesCalled)};
    const CSampleRow row = MakeRow(sample, PlateFolderOf(output.name));
    std::string lines;
    for (const CMixedPlace& place : MixedPlaces(sample.info, options.isWhole ? all : GoodRegion(analysis),
                                                options.ratio.value_or(usualMixedRatio)))
        lines += LineOf(row, analysis, place);
    return lines;
}

ExitCode ListMixed(const CMixedOptions& options) {
    Unread unread;
    const std::vector<COutputFolder> outputs = FindOutputs(options.outputs, unread);
    platform::AtomicFile file;
    const std::string target = options.target.empty() ? "" : ResolveTarget(options.target);
    if (!target.empty())
        if (const auto error = file.Open(target)) throw CRefused(target + ": " + error.Text());
    std::size_t samples = 0, notCalled = 0;
    for (const COutputFolder& output : outputs)
        samples += output.files.size();
    CProgress progress("samples", samples);
    std::string table = "plate\twell\tfile\tbase\tcode\tletters\tratio\tquality\n";
    for (const COutputFolder& output : outputs)
        for (const std::string& path : output.files) {
            CheckInterrupt();
            const CStoredSample sample = ReadStoredSample(path);
            if (sample.state == SampleState::Called) {
                table += LinesOf(sample, output, options);
            } else {
                ++notCalled;
                progress.Say(path + ": " + StateName(sample.state) + ": " + OneLine(ToUtf8(sample.reason)));
            }
            progress.Step();
        }
    ShowUnread(unread);
    if (target.empty()) {
        WriteStandardOutput(table);
    } else {
        file.Write(table);
        CommitToDisk(file, target);
    }
    return notCalled > 0 || !unread.empty() ? ExitCode::Incomplete : ExitCode::Done;
}

}  // namespace

CSubcommand AddMixed(CLI::App& tools) {
    const auto options = std::make_shared<CMixedOptions>();
    CLI::App* app = tools.add_subcommand("mixed", about);
    app->footer(notes);
    app->add_option("OUT", options->outputs, "Folders with results")->required()->check(PlainPath())->type_name("OUT");
    AddMixedRatio(*app, "--ratio", options->ratio, "Least strength of a second letter, relative to the strongest")
        ->default_str("0.33");
    app->add_flag("--whole", options->isWhole, "The whole reads, not only their good regions");
    app->add_option("-o,--output", options->target, "File for the table instead of standard output")
        ->check(PlainPath())
        ->type_name("FILE");
    return {app, [options] { return ListMixed(*options); }};
}

}  // namespace lanetools
