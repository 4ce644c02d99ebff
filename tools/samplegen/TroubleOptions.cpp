// SPDX-License-Identifier: MIT
#include "samplegen/TroubleOptions.h"

#include <string>
#include <vector>

#include "samplegen/OptionGroup.h"
#include "samplegen/Troubles.h"

namespace samplegen {

namespace {

constexpr const char* group = "Troubles";

std::string CheckScale(const std::string& given) {
    double scale = -1;
    const bool isNumber = CLI::detail::lexical_cast(given, scale);
    return isNumber && (scale == 0 || (scale >= 0.2 && scale <= 5)) ? "" : given + " is neither 0 nor 0.2 to 5";
}

void AddShapeOptions(COptionGroup& options, Troubles& troubles) {
    options.Add("--real-spacing", troubles.realSpacing, "FACTOR", CLI::Validator(CheckScale, ""),
                "Spacing of real runs, times this, 0.2 to 5: 11.4\nscans at base 30, 14.9 at 400, 12.5 at 900; 0 is\n"
                "the plain spacing");
    options.Add("--dye-shifts", troubles.dyeShifts, "NAME", OneOf({"plain", "none", "common", "early"}),
                "plain (see --mobility), none, or those of a real\nchemistry: common or early");
    options.Add("--heights", troubles.heights, "NAME", OneOf({"plain", "real"}),
                "How a peak depends on the letter before it: plain or\nreal");
    options.Add("--widening", troubles.widening, "FACTOR", Within(0, 5),
                "Growth of the peaks' width along the read, 0 to 5,\n1 is plain");
    options.Add("--decay", troubles.decay, "BASES", Within(100, 10000),
                "Bases in which the level falls to 1/e, 100 to 10000");
}

void AddEventOptions(COptionGroup& options, Troubles& troubles) {
    options.Add("--drop", troubles.drop, "FACTOR", Within(1, 1000),
                "The level is divided by this from some base on, 1 to\n1000");
    options.Add("--drop-at", troubles.dropAt, "BASE", Within(0, 2000), "Base of the drop, up to 2000; 0 is the middle");
    options.Add("--end-at", troubles.endAt, "BASES", Within(0, 2000),
                "Bases after which the template ends while the run\ngoes on, up to 2000; 0 is all");
    options.Add("--spikes", troubles.spikes, "N", Within(0, 1000),
                "Flashes in all four channels at once, 0 to 1000 per\nread");
    options.Add("--blobs", troubles.blobs, "N", Within(0, 20),
                "Broad humps of one dye near the start, 0 to 20 per\nread");
}

void AddMixtureOptions(COptionGroup& options, Troubles& troubles) {
    options.Add("--cross-talk", troubles.crossTalk, "FACTOR", Within(0, 1.5),
                "Signal of the dyes in each other's channels, 0 to\n1.5; 1 is plain, 0 is none");
    options.AddFlag("--matrix-unknown", troubles.matrixKnown, false,
                    "The matrix and the samples state that there is no\ncross-talk");
    options.Add("--mixed-from", troubles.mixedFrom, "BASE", Within(0, 2000),
                "Base from which sites may have two letters, up to\n2000; 0 is none");
    options.Add("--mixed-every", troubles.mixedEvery, "N", Within(1, 1000),
                "One site in so many is mixed, on average, 1 to 1000;\n1 is all");
    options.Add("--mixed-part", troubles.mixedPart, "PART", Within(0.01, 0.5),
                "Light of the second letter, 0.01 to 0.5 of the site's");
}

}  // namespace

void AddTroubleOptions(CLI::App& app, Options& options) {
    COptionGroup troubles(app, group);
    troubles.AddFlag("--hard", options.hard, true,
                     "Each well has its own, random troubles; reads have up\nto 1000 bases unless --bases is given");
    AddShapeOptions(troubles, options.troubles);
    AddEventOptions(troubles, options.troubles);
    AddMixtureOptions(troubles, options.troubles);
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
    constexpr int usualBases = 1000;  // of a hard plate
    if (app.count("--bases") == 0) options.bases = usualBases;
}

}  // namespace samplegen
