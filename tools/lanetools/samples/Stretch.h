// SPDX-License-Identifier: MIT
// A part of the bases of a sample.
#pragma once

#include <algorithm>
#include <cstddef>

namespace lanetools {

// `length` bases from base `start` on, which counts from 0.
struct CStretch {
    std::size_t start = 0, length = 0;

    std::size_t End() const { return start + length; }
    friend bool operator==(const CStretch&, const CStretch&) = default;
};

// Returns the part that two stretches share; empty if there is none.
inline CStretch Shared(CStretch a, CStretch b) {
    const std::size_t start = std::max(a.start, b.start), end = std::min(a.End(), b.End());
    return end > start ? CStretch{start, end - start} : CStretch{start, 0};
}

}  // namespace lanetools
