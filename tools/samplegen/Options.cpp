#include "samplegen/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

namespace samplegen {

namespace {

constexpr const char* about =
    "Makes a plate of synthetic raw samples whose bases are known.\n"
    "\n"
    "Into FOLDER (made if its parent is there; files of the same names are replaced) go\n"
    "  <plate><well>.rsd   one raw sample a well, such as synthA01.rsd\n"
    "  truth.fasta         the true bases, one record a well, titled by the file's name\n"
    "                      without extension; a failed well has no record\n"
    "  dyeMethod1.ini      the dye matrix of the plate; put it beside lanewright\n"
    "\n"
    "Up to 96 wells are a plate of 12 columns and 8 rows, more are one of 24 and 16; wells\n"
    "are filled row by row. The same options give the same files, byte for byte, on every\n"
    "machine, and a well keeps its read when the number of wells changes.";

constexpr const char* notes =
    "\n"
    "The matrix has one row a channel and one column a dye, both named by their base: a row\n"
    "tells how far each of the four dyes shows in that channel.\n"
    "\n"
    "Examples:\n"
    "  samplegen plate1\n"
    "  samplegen plate2 --wells 384 --bases 800 --failed 5 --saturated 3 --seed 42\n"
    "  samplegen old --form esd --version 1.1 --no-tree --plate xyz --base-order ACTG";

std::string CheckBaseOrder(const std::string& order) {
    std::string sorted = order;
    std::sort(sorted.begin(), sorted.end());
    return sorted == "ACGT" ? "" : "must be the letters A, C, G and T in some order";
}

// The name goes into file names and into titles of FASTA records.
std::string CheckPlateName(const std::string& name) {
    const auto fits = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    const bool good = !name.empty() && name.size() <= 17 && std::all_of(name.begin(), name.end(), fits);
    return good ? "" : "must be 1 to 17 letters, digits, '-' and '_'";
}

void AddPlateOptions(CLI::App& app, Options& options) {
    const char* group = "Plate";
    app.add_option("folder", options.folder, "Where the files go")->required()->type_name("FOLDER");
    app.add_option("-p,--plate", options.plate, "Name of the plate, and head of the file names")
        ->check(CLI::Validator(CheckPlateName, ""))
        ->type_name("NAME")
        ->group(group);
    app.add_option("-w,--wells", options.wells, "Number of wells, 1 to 384")
        ->check(CLI::Range(1, 384).description(""))
        ->type_name("N")
        ->group(group);
    app.add_option("--failed", options.failedWells, "How many of the wells give no signal")
        ->check(CLI::Range(0, 384).description(""))
        ->type_name("N")
        ->group(group);
    app.add_option("--saturated", options.saturatedWells, "How many more drive the detector to its limit")
        ->check(CLI::Range(0, 384).description(""))
        ->type_name("N")
        ->group(group);
    app.add_option("-s,--seed", options.seed, "Number that all chance comes from")->type_name("N")->group(group);
}

void AddFileOptions(CLI::App& app, Options& options) {
    const char* group = "Files";
    app.add_option("--form", options.form, "Extension: rsd or esd")
        ->check(CLI::IsMember({"rsd", "esd"}).description(""))
        ->type_name("FORM")
        ->group(group);
    app.add_option("--version", options.version, "Version of the file form: 1.1 or 1.2")
        ->check(CLI::IsMember({"1.1", "1.2"}).description(""))
        ->type_name("VERSION")
        ->group(group);
    app.add_flag("!--no-tree", options.tree, "Write no property tree, only the trailer")->group(group);
}

void AddTraceOptions(CLI::App& app, Options& options) {
    const char* group = "Traces";
    app.add_option("-b,--bases", options.bases, "Bases a read, 20 to 2000")
        ->check(CLI::Range(20, 2000).description(""))
        ->type_name("N")
        ->group(group);
    app.add_option("-o,--base-order", options.baseOrder, "Bases of channels 1 to 4")
        ->check(CLI::Validator(CheckBaseOrder, ""))
        ->type_name("LETTERS")
        ->group(group);
    app.add_option("-r,--scan-rate", options.scanRate,
                   "Index of the scan rate, 0 to 4: 1.76, 2.89, 1.76, 3.52 or\n2.88 scans a second")
        ->check(CLI::Range(0, 4).description(""))
        ->type_name("INDEX")
        ->group(group);
    app.add_option("-n,--noise", options.noise,
                   "Noise without light, in counts, 0 to 1000; a usual peak\nof the first bases has 2500")
        ->check(CLI::Range(0.0, 1000.0).description(""))
        ->type_name("COUNTS")
        ->group(group);
    app.add_option("-m,--mobility", options.mobility, "Greatest shift between the dyes, in bases, 0 to 2")
        ->check(CLI::Range(0.0, 2.0).description(""))
        ->type_name("BASES")
        ->group(group);
}

}  // namespace

std::optional<Options> ParseOptions(int argc, const char* const* argv, int& exitCode) {
    Options options;
    CLI::App app(about, "samplegen");
    app.footer(notes);
    app.option_defaults()->always_capture_default();
    app.get_formatter()->column_width(30);
    AddPlateOptions(app, options);
    AddFileOptions(app, options);
    AddTraceOptions(app, options);
    try {
        app.parse(argc, argv);
        if (options.failedWells + options.saturatedWells > options.wells)
            throw CLI::ValidationError("--failed and --saturated", "more wells than the plate has");
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error, std::cout, std::cerr) == 0 ? 0 : 1;
        return std::nullopt;
    }
    return options;
}

}  // namespace samplegen
