// SPDX-License-Identifier: MIT
#include "samplegen/HardWell.h"

#include <algorithm>
#include <cstdio>

#include "samplegen/Exp.h"

namespace samplegen {

namespace {

bool Happens(double probability, CRandom& random) {
    return random.Uniform() < probability;
}

// How many bases can be read by a careful eye, `bases` at most: until the peaks merge or are too low.
int ReadableBases(const Troubles& troubles, int bases) {
    constexpr double maxWidth = 0.6;      // deviation of a peak, in spacings
    constexpr double usualHeight = 2500;  // counts of the first peaks
    constexpr double minHeight = 10;      // height of a peak relative to the noise
    constexpr int step = 10;              // bases
    for (int n = step; n < bases; n += step) {
        const double height = usualHeight * Exp(-n / troubles.decay) / (n > troubles.dropAt ? troubles.drop : 1);
        if (0.25 + 0.0003 * troubles.widening * n > maxWidth || height < minHeight * troubles.noise) return n;
    }
    return bases;
}

// The troubles that every real read has.
void DrawCommon(Troubles& troubles, double scansPerSecond, CRandom& random) {
    static constexpr const char* shifts[] = {"common", "common", "early", "none"};
    constexpr double usualScanRate = 3;  // scans per second, at which the spacing of real runs holds
    troubles.realSpacing = scansPerSecond / usualScanRate * random.Between(0.85, 1.15);
    troubles.dyeShifts = shifts[random.Below(4)];
    troubles.heights = "real";
    troubles.noise = 4 * Exp(random.Between(0, 2.7));  // up to 60
    troubles.decay = random.Between(400, 1500);
    troubles.widening = random.Between(0.8, 2);
    troubles.crossTalk = random.Between(0, 0.1);
    troubles.matrixKnown = false;
}

// The troubles that some reads have.
void DrawRare(Troubles& troubles, int bases, CRandom& random) {
    if (Happens(0.15, random)) {
        troubles.drop = random.Between(3, 10);
        troubles.dropAt = static_cast<int>(bases * random.Between(0.15, 0.4));
        troubles.noise = random.Between(4, 8);  // with more noise nothing could be read after the drop
    }
    if (Happens(0.3, random)) troubles.spikes = 1 + random.Below(20);
    if (Happens(0.35, random)) troubles.blobs = 1 + random.Below(3);
    if (Happens(0.12, random)) troubles.crossTalk = random.Between(0.5, 1);
    if (Happens(0.2, random)) {
        troubles.mixedFrom = 1 + static_cast<int>(bases * random.Between(0.05, 0.25));
        troubles.mixedEvery = 5 + random.Below(56);
        troubles.mixedPart = random.Between(0.2, 0.5);
    }
}

}  // namespace

Troubles DrawTroubles(int bases, double scansPerSecond, CRandom& random) {
    Troubles troubles;
    DrawCommon(troubles, scansPerSecond, random);
    DrawRare(troubles, bases, random);
    const int readable = ReadableBases(troubles, bases);
    const bool endsEarly = Happens(0.25, random), goesOn = Happens(0.2, random);
    const int early = static_cast<int>(readable * random.Between(0.3, 0.7));
    troubles.endAt = endsEarly ? early : goesOn || readable >= bases ? 0 : readable;
    if (troubles.endAt > 0) {
        troubles.dropAt = std::min(troubles.dropAt, troubles.endAt / 2);
        troubles.mixedFrom = std::min(troubles.mixedFrom, troubles.endAt / 2);
    }
    return troubles;
}

std::string TroublesText(const Troubles& troubles) {
    char text[200];
    std::snprintf(text, sizeof text,
                  "spacing x %.2f, shifts %s, noise %.1f, decay %.0f, widening %.2f, cross-talk %.2f",
                  troubles.realSpacing, troubles.dyeShifts.c_str(), troubles.noise, troubles.decay, troubles.widening,
                  troubles.crossTalk);
    std::string line = text;
    const auto add = [&](bool is, const char* form, auto... values) {
        std::snprintf(text, sizeof text, form, values...);
        if (is) line += text;
    };
    add(troubles.drop > 1, ", drop %.1f at %d", troubles.drop, troubles.dropAt);
    add(troubles.spikes > 0, ", %d spikes", troubles.spikes);
    add(troubles.blobs > 0, ", %d blobs", troubles.blobs);
    add(troubles.mixedFrom > 0, ", mixed from %d every %d part %.2f", troubles.mixedFrom, troubles.mixedEvery,
        troubles.mixedPart);
    add(troubles.endAt > 0, ", ends at %d", troubles.endAt);
    return line;
}

}  // namespace samplegen
