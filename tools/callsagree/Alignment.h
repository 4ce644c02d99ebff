// How well a call agrees with the truth.
#pragma once

#include <cstddef>
#include <string_view>

namespace callsagree {

// Counts of bases; those of several calls can be added up.
struct Agreement {
    std::size_t truth = 0;   // true bases
    std::size_t called = 0;  // called bases
    std::size_t matches = 0;
    std::size_t substitutions = 0;
    std::size_t insertions = 0;  // called without a true base
    std::size_t deletions = 0;   // true bases that were not called

    // True bases that the call covers: all but overhangs.
    std::size_t Covered() const { return matches + substitutions + deletions; }
    // Matches in all columns of the aligned part, in percent; 0 without any.
    double Identity() const;
    // True bases that are covered, in percent; 0 without any.
    double Coverage() const;
    Agreement& operator+=(const Agreement& other);
};

// An ambiguity code in the truth, such as R for A or G, agrees with each of its letters and with itself; one in the
// call agrees with itself alone.
//
// The best alignment by the score matches - substitutions - insertions - deletions, where at each end one of the two
// may overhang without cost. Takes time and memory of truth.size() x call.size(); throws std::runtime_error when that
// is above 2^30.
Agreement Align(std::string_view truth, std::string_view call);

}  // namespace callsagree
