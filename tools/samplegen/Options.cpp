// SPDX-License-Identifier: MIT
#include "samplegen/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "commandline/Help.h"
#include "samplegen/OptionGroup.h"
#include "samplegen/TroubleOptions.h"

namespace samplegen {

namespace {

constexpr const char* about =
    "Makes a plate of synthetic raw samples whose bases are known.\n"
    "\n"
    "These files go into FOLDER. The folder is made if its parent exists, and files of the\n"
    "same names are replaced.\n"
    "  <plate><well>.rsd   one raw sample per well, such as synthA01.rsd\n"
    "  truth.fasta         the true bases, one record per well. Its title is the\n"
    "                      name of the sample's file without extension. A mixed\n"
    "                      site has the ambiguity code of its two letters, and a\n"
    "                      failed well has no record\n"
    "  dyeMethod1.ini      the dye matrix of the plate; put it into lanewright's\n"
    "                      folder\n"
    "  troubles.txt        with --hard: the troubles of each well\n"
    "\n"
    "A plate of up to 96 wells has 12 columns and 8 rows, a larger one 24 and 16. Wells are\n"
    "filled row by row. The same options give the same files, byte for byte, on every\n"
    "machine, and a well keeps its bases when the number of wells changes.";

constexpr const char* notes =
    "The matrix has one row per channel and one column per dye, both named by their base. A\n"
    "row gives the signal of each of the four dyes in that channel.\n"
    "\n"
    "Troubles do not change the bases of a well and, except with --hard, do not affect each\n"
    "other. With --hard the matrix has no cross-talk, and --noise, --mobility and the\n"
    "other options under Troubles cannot be given.\n"
    "\n"
    "Examples:\n"
    "  samplegen plate1\n"
    "  samplegen plate2 --wells 384 --bases 800 --failed 5 --saturated 3 --seed 42\n"
    "  samplegen plate3 --hard --wells 12 --seed 7\n"
    "  samplegen late --bases 1000 --real-spacing 1 --dye-shifts common --noise 30\n"
    "  samplegen old --form esd --version 1.1 --no-tree --plate xyz --base-order ACTG";

std::string CheckBaseOrder(const std::string& order) {
    std::string sorted = order;
    std::sort(sorted.begin(), sorted.end());
    return sorted == "ACGT" ? "" : "must be the letters A, C, G and T in some order";
}

// The name becomes part of file names and of titles of FASTA records.
std::string CheckPlateName(const std::string& name) {
    const auto fits = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    const bool good = !name.empty() && name.size() <= 17 && std::all_of(name.begin(), name.end(), fits);
    return good ? "" : "must be 1 to 17 letters, digits, '-' and '_'";
}

// The conversion alone would accept minus signs and any number of digits.
std::string CheckSeed(const std::string& given) {
    const bool good = given.size() <= 19 && given.find_first_not_of("0123456789") == std::string::npos;
    return good ? "" : given + " is no whole number of up to 19 digits";
}

void AddPlateOptions(CLI::App& app, Options& options) {
    app.add_option("folder", options.folder, "Where the files go")->required()->type_name("FOLDER");
    COptionGroup plate(app, "Plate");
    plate.Add("-p,--plate", options.plate, "NAME", CLI::Validator(CheckPlateName, ""),
              "Name of the plate, and start of the file names");
    plate.Add("-w,--wells", options.wells, "N", Within(1, 384), "Number of wells, 1 to 384");
    plate.Add("--failed", options.failedWells, "N", Within(0, 384), "How many of the wells give no signal");
    plate.Add("--saturated", options.saturatedWells, "N", Within(0, 384), "How many more wells saturate the detector");
    plate.Add("-s,--seed", options.seed, "N", CLI::Validator(CheckSeed, ""), "Seed of all random numbers");
}

void AddFileOptions(CLI::App& app, Options& options) {
    COptionGroup files(app, "Files");
    files.Add("--form", options.form, "FORM", OneOf({"rsd", "esd"}), "Extension, rsd or esd");
    files.Add("--version", options.version, "VERSION", OneOf({"1.1", "1.2"}), "Version of the file format, 1.1 or 1.2");
    files.AddFlag("--no-tree", options.tree, false, "Write no property tree, only the trailer");
}

void AddTraceOptions(CLI::App& app, Options& options) {
    COptionGroup traces(app, "Traces");
    traces.Add("-b,--bases", options.bases, "N", Within(20, 2000), "Bases per read, 20 to 2000");
    traces.Add("-o,--base-order", options.baseOrder, "LETTERS", CLI::Validator(CheckBaseOrder, ""),
               "Bases of channels 1 to 4");
    traces.Add("-r,--scan-rate", options.scanRate, "INDEX", Within(0, 4),
               "Index of the scan rate, 0 to 4: 1.76, 2.89, 1.76, 3.52\nor 2.88 scans per second");
    traces.Add("-n,--noise", options.troubles.noise, "COUNTS", Within(0, 1000),
               "Noise without light, 0 to 1000 counts; the first\npeaks have some 2500");
    traces.Add("-m,--mobility", options.troubles.mobility, "BASES", Within(0, 2),
               "Greatest shift between the dyes, 0 to 2 bases");
}

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode) {
    Options options;
    CLI::App app(about, "samplegen");
    app.footer(notes);
    app.option_defaults()->always_capture_default();
    AddPlateOptions(app, options);
    AddFileOptions(app, options);
    AddTraceOptions(app, options);
    AddTroubleOptions(app, options);
    app.callback([&app, &options] {
        if (options.failedWells + options.saturatedWells > options.wells)
            throw CLI::ValidationError("--failed and --saturated", "more wells than the plate has");
        CheckTroubles(app, options);
    });
    if (!commandline::Parse(app, argc, argv, exitCode)) return std::nullopt;
    return options;
}

}  // namespace samplegen
