#include "samplegen/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "commandline/Help.h"
#include "samplegen/TroubleOptions.h"
#include "samplegen/Validators.h"

namespace samplegen {

namespace {

constexpr const char* about =
    "Makes a plate of synthetic raw samples whose bases are known.\n"
    "\n"
    "Into FOLDER (made if its parent is there; files of the same names are replaced) go\n"
    "  <plate><well>.rsd   one raw sample a well, such as synthA01.rsd\n"
    "  truth.fasta         the true bases, one record a well, titled by the file's name\n"
    "                      without extension; a mixed site has the ambiguity code of its\n"
    "                      two letters, and a failed well has no record\n"
    "  dyeMethod1.ini      the dye matrix of the plate; put it beside lanewright\n"
    "  troubles.txt        with --hard: what each well has drawn\n"
    "\n"
    "Up to 96 wells are a plate of 12 columns and 8 rows, more are one of 24 and 16; wells\n"
    "are filled row by row. The same options give the same files, byte for byte, on every\n"
    "machine, and a well keeps its bases when the number of wells changes.";

constexpr const char* notes =
    "The matrix has one row a channel and one column a dye, both named by their base: a row\n"
    "says how far each of the four dyes shows in that channel.\n"
    "\n"
    "Troubles change neither the bases of a well nor, --hard apart, each other. With --hard\n"
    "the matrix has no cross-talk and none of the other options of the group, --noise or\n"
    "--mobility may be given.\n"
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

// The name goes into file names and into titles of FASTA records.
std::string CheckPlateName(const std::string& name) {
    const auto fits = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    const bool good = !name.empty() && name.size() <= 17 && std::all_of(name.begin(), name.end(), fits);
    return good ? "" : "must be 1 to 17 letters, digits, '-' and '_'";
}

// The conversion alone would let minus signs and any number of digits pass.
std::string CheckSeed(const std::string& given) {
    const bool good = given.size() <= 19 && given.find_first_not_of("0123456789") == std::string::npos;
    return good ? "" : given + " is no whole number of up to 19 digits";
}

void AddPlateOptions(CLI::App& app, Options& options) {
    const char* group = "Plate";
    app.add_option("folder", options.folder, "Where the files go")->required()->type_name("FOLDER");
    app.add_option("-p,--plate", options.plate, "Name of the plate, and head of the file names")
        ->check(CLI::Validator(CheckPlateName, ""))
        ->type_name("NAME")
        ->group(group);
    app.add_option("-w,--wells", options.wells, "Number of wells, 1 to 384")
        ->check(Within(1, 384, "1 to 384"))
        ->type_name("N")
        ->group(group);
    app.add_option("--failed", options.failedWells, "How many of the wells give no signal")
        ->check(Within(0, 384, "0 to 384"))
        ->type_name("N")
        ->group(group);
    app.add_option("--saturated", options.saturatedWells, "How many more drive the detector to its limit")
        ->check(Within(0, 384, "0 to 384"))
        ->type_name("N")
        ->group(group);
    app.add_option("-s,--seed", options.seed, "Number that all chance comes from")
        ->check(CLI::Validator(CheckSeed, ""))
        ->type_name("N")
        ->group(group);
}

void AddFileOptions(CLI::App& app, Options& options) {
    const char* group = "Files";
    app.add_option("--form", options.form, "Extension, rsd or esd")
        ->check(OneOf({"rsd", "esd"}))
        ->type_name("FORM")
        ->group(group);
    app.add_option("--version", options.version, "Version of the file form, 1.1 or 1.2")
        ->check(OneOf({"1.1", "1.2"}))
        ->type_name("VERSION")
        ->group(group);
    app.add_flag_callback(
           "--no-tree", [&options] { options.tree = false; }, "Write no property tree, only the trailer")
        ->disable_flag_override()
        ->group(group);
}

void AddTraceOptions(CLI::App& app, Options& options) {
    const char* group = "Traces";
    app.add_option("-b,--bases", options.bases, "Bases a read, 20 to 2000")
        ->check(Within(20, 2000, "20 to 2000"))
        ->type_name("N")
        ->group(group);
    app.add_option("-o,--base-order", options.baseOrder, "Bases of channels 1 to 4")
        ->check(CLI::Validator(CheckBaseOrder, ""))
        ->type_name("LETTERS")
        ->group(group);
    app.add_option("-r,--scan-rate", options.scanRate,
                   "Index of the scan rate, 0 to 4: 1.76, 2.89, 1.76, 3.52\nor 2.88 scans a second")
        ->check(Within(0, 4, "0 to 4"))
        ->type_name("INDEX")
        ->group(group);
    app.add_option("-n,--noise", options.troubles.noise,
                   "Noise without light, in counts, 0 to 1000, where the\nfirst peaks have some 2500")
        ->check(Within(0, 1000, "0 to 1000"))
        ->type_name("COUNTS")
        ->group(group);
    app.add_option("-m,--mobility", options.troubles.mobility, "Greatest shift between the dyes, 0 to 2 bases")
        ->check(Within(0, 2, "0 to 2"))
        ->type_name("BASES")
        ->group(group);
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
