// SPDX-License-Identifier: MIT
// Trimming: the stretch of a read that is worth keeping for its qualities.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>

#include "lanetools/samples/Stretch.h"

namespace lanetools {

// Returns the stretch to keep of bases with these qualities, in percent as they are stored. `good` is the caller's good
// region among them. The result is within `percents`.
using Trim = std::function<CStretch(std::span<const float> percents, CStretch good)>;

// From "none", "good", "mott:LIMIT" (above 0, up to 1) or "window:W,Q" (W from 1 to longestWindow, Q from 0 to
// largestPhred). Throws CRefused for anything else.
Trim ParseTrim(const std::string& how);
// Bases of the longest window; no read has more.
inline constexpr std::size_t longestWindow = 32767;

// Returns the stretch with the highest sum of `limit` minus the probability of an error; of equals the first to begin,
// then the shortest. Empty if no base is better than `limit`.
CStretch TrimMott(std::span<const float> percents, double limit);

// Returns the longest run of bases in which every window of `window` bases has a mean Phred of `phred` or more; of
// equals the first. A run has at least one window; a read shorter than that is one window. `window` is not 0.
CStretch TrimWindow(std::span<const float> percents, std::size_t window, double phred);

}  // namespace lanetools
