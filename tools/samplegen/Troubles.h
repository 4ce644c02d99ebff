// SPDX-License-Identifier: MIT
// The properties of a read that make it easy or hard to call.
#pragma once

#include <string>

namespace samplegen {

// The settings of one read. The defaults make an easy one.
struct Troubles {
    double noise = 6;                 // standard deviation without light, in counts
    double mobility = 0.3;            // greatest plain shift between dyes, in bases at the start of the read
    std::string dyeShifts = "plain";  // a name, see DyeShifts.h
    double realSpacing = 0;           // factor of the spacing of real runs, see SpacingCurve.h; 0 for the plain one
    double widening = 1;              // of the peaks along the read, relative to the plain one
    double decay = 450;               // bases in which the level falls to 1/e
    std::string heights = "plain";    // plain or real, see Heights.h
    double drop = 1;                  // what the level is divided by from the base dropAt on
    int dropAt = 0;                   // 0 for the middle of the read
    int spikes = 0;                   // per read
    int blobs = 0;                    // per read
    int endAt = 0;                    // bases after which the template ends while the run goes on; 0 for all
    double crossTalk = 1;             // between the dyes, relative to the plain one
    bool matrixKnown = true;          // whether the samples and dyeMethod1.ini state the cross-talk
    int mixedFrom = 0;                // base, counted from 1, from which sites may be mixed; 0 for none
    int mixedEvery = 10;              // one site in so many is mixed, on average
    double mixedPart = 0.35;          // share of the second letter in the light of a mixed site
};

}  // namespace samplegen
