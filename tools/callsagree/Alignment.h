// SPDX-License-Identifier: MIT
// Aligns called bases with the true ones and counts how well they agree.
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
    std::size_t insertions = 0;  // called bases without a true base
    std::size_t deletions = 0;   // true bases that were not called

    // True bases that the call covers: all except those that overhang.
    std::size_t Covered() const { return matches + substitutions + deletions; }
    // Share of the matches in all columns of the aligned part, in percent; 0 if it is empty.
    double Identity() const;
    // Share of the true bases that are covered, in percent; 0 if there are none.
    double Coverage() const;
    Agreement& operator+=(const Agreement& other);
};

// The alignment with the highest score matches - substitutions - insertions - deletions. At each end one of the two
// sequences may overhang without cost. An ambiguity code in the truth, such as R for A or G, matches each of its
// letters and itself; one in the call matches only itself.
//
// Time and memory are in proportion to truth.size() x call.size(); throws std::runtime_error if that is above 2^30.
Agreement Align(std::string_view truth, std::string_view call);

}  // namespace callsagree
