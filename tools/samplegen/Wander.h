// A quantity that wanders slowly and smoothly round 0, as a baseline does.
#pragma once

#include <cstddef>
#include <vector>

#include "samplegen/Random.h"

namespace samplegen {

class CWander {
  public:
    // For scans 0 to scanCount - 1; a new direction every `step` scans, and values of about `size`.
    CWander(std::size_t scanCount, double step, double size, CRandom& random);
    double At(std::size_t scan) const;

  private:
    double step;
    std::vector<double> knots;
};

}  // namespace samplegen
