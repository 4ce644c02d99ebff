// SPDX-License-Identifier: MIT
// The quality of a plate's reads along the read.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <span>
#include <vector>

namespace lanetools {

// Collects the Phred values of many reads by their place in the read.
class CQualityByPosition {
  public:
    // Bases that are taken together.
    static constexpr std::size_t step = 10;

    // `percents` are the stored qualities of a read, the first base first.
    void Add(std::span<const float> percents);
    // Quartiles per step, one decimal, as far as a quarter of the reads go (QualityByPosition in page/src/data.ts).
    nlohmann::ordered_json Quartiles() const;

  private:
    std::size_t reads = 0;
    std::vector<std::vector<float>> phreds;  // per step
};

}  // namespace lanetools
