#include "samplegen/TroubleOptions.h"

#include "samplegen/Validators.h"

namespace samplegen {

namespace {

constexpr const char* group = "Troubles";

std::string CheckScale(const std::string& given) {
    double scale = -1;
    const bool isNumber = CLI::detail::lexical_cast(given, scale);
    return isNumber && (scale == 0 || (scale >= 0.2 && scale <= 5)) ? "" : given + " is neither 0 nor 0.2 to 5";
}

void AddShapeOptions(CLI::App& app, Troubles& troubles) {
    app.add_option(
           "--real-spacing", troubles.realSpacing,
           "Spacing of real runs, times this, 0.2 to 5: 11.4\nscans at base 30, 14.9 at 400, 12.5 at 900; 0 is\n"
           "the plain spacing")
        ->check(CLI::Validator(CheckScale, ""))
        ->type_name("FACTOR")
        ->group(group);
    app.add_option("--dye-shifts", troubles.dyeShifts,
                   "plain (see --mobility), none, or those of a real\nchemistry: common or early")
        ->check(OneOf({"plain", "none", "common", "early"}))
        ->type_name("NAME")
        ->group(group);
    app.add_option("--heights", troubles.heights, "What the letter before does to a peak: plain or real")
        ->check(OneOf({"plain", "real"}))
        ->type_name("NAME")
        ->group(group);
    app.add_option("--widening", troubles.widening, "Growth of the peaks' width along the read, 0 to 5,\n1 is plain")
        ->check(Within(0, 5, "0 to 5"))
        ->type_name("FACTOR")
        ->group(group);
    app.add_option("--decay", troubles.decay, "Bases in which the level falls to 1/e, 100 to 10000")
        ->check(Within(100, 10000, "100 to 10000"))
        ->type_name("BASES")
        ->group(group);
}

void AddEventOptions(CLI::App& app, Troubles& troubles) {
    app.add_option("--drop", troubles.drop, "What the level is divided by from some base on, 1 to\n1000")
        ->check(Within(1, 1000, "1 to 1000"))
        ->type_name("FACTOR")
        ->group(group);
    app.add_option("--drop-at", troubles.dropAt, "Base of the drop, up to 2000; 0 is the middle")
        ->check(Within(0, 2000, "0 to 2000"))
        ->type_name("BASE")
        ->group(group);
    app.add_option("--end-at", troubles.endAt,
                   "Bases after which the template ends while the run\ngoes on as for all, up to 2000; 0 is all")
        ->check(Within(0, 2000, "0 to 2000"))
        ->type_name("BASES")
        ->group(group);
    app.add_option("--spikes", troubles.spikes, "Flashes in all four channels at once, 0 to 1000 per\nread")
        ->check(Within(0, 1000, "0 to 1000"))
        ->type_name("N")
        ->group(group);
    app.add_option("--blobs", troubles.blobs, "Broad humps of one dye near the start, 0 to 20 per\nread")
        ->check(Within(0, 20, "0 to 20"))
        ->type_name("N")
        ->group(group);
}

void AddMixtureOptions(CLI::App& app, Troubles& troubles) {
    app.add_option("--cross-talk", troubles.crossTalk,
                   "How far dyes show in each other's channels, 0 to 1.5;\n1 is plain, 0 is none")
        ->check(Within(0, 1.5, "0 to 1.5"))
        ->type_name("FACTOR")
        ->group(group);
    app.add_flag_callback(
           "--matrix-unknown", [&troubles] { troubles.matrixKnown = false; },
           "The matrix and the samples claim that there is no\ncross-talk")
        ->disable_flag_override()
        ->group(group);
    app.add_option("--mixed-from", troubles.mixedFrom,
                   "Base from which sites may have two letters, up to\n2000; 0 is none")
        ->check(Within(0, 2000, "0 to 2000"))
        ->type_name("BASE")
        ->group(group);
    app.add_option("--mixed-every", troubles.mixedEvery, "Of how many sites one is mixed, 1 to 1000; 1 is all")
        ->check(Within(1, 1000, "1 to 1000"))
        ->type_name("N")
        ->group(group);
    app.add_option("--mixed-part", troubles.mixedPart, "Light of the second letter, 0.01 to 0.5 of the site's")
        ->check(Within(0.01, 0.5, "0.01 to 0.5"))
        ->type_name("PART")
        ->group(group);
}

}  // namespace

void AddTroubleOptions(CLI::App& app, Options& options) {
    app.add_flag_callback(
           "--hard", [&options] { options.hard = true; },
           "Each well draws its own troubles; reads have up to\n1000 bases if --bases says nothing else")
        ->disable_flag_override()
        ->group(group);
    AddShapeOptions(app, options.troubles);
    AddEventOptions(app, options.troubles);
    AddMixtureOptions(app, options.troubles);
}

void CheckTroubles(const CLI::App& app, Options& options) {
    if (options.troubles.endAt > options.bases) throw CLI::ValidationError("--end-at", "more bases than a read has");
    if (options.troubles.dropAt >= options.bases) throw CLI::ValidationError("--drop-at", "lies after the read");
    if (options.troubles.mixedFrom > options.bases) throw CLI::ValidationError("--mixed-from", "lies after the read");
    if (!options.hard) return;
    for (const CLI::Option* option : app.get_options())
        if (option->count() > 0 && option->get_name() != "--hard" &&
            (option->get_group() == group || option->check_name("--noise") || option->check_name("--mobility")))
            throw CLI::ValidationError("--hard", "draws what " + option->get_name() + " sets; give one of them");
    constexpr int usualBases = 1000;
    if (app.count("--bases") == 0) options.bases = usualBases;
}

}  // namespace samplegen
