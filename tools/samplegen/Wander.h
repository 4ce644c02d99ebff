// SPDX-License-Identifier: MIT
// A quantity that wanders slowly and smoothly around 0, as a baseline does.
#pragma once

#include <cstddef>
#include <vector>

#include "samplegen/Random.h"

namespace samplegen {

class CWander {
  public:
    // For scans 0 to scanCount - 1. It changes direction every `step` scans; `size` is the standard deviation of its
    // values.
    CWander(std::size_t scanCount, double step, double size, CRandom& random);
    double At(std::size_t scan) const;

  private:
    double step;
    std::vector<double> knots;
};

}  // namespace samplegen
