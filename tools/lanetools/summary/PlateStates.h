// SPDX-License-Identifier: MIT
// How the samples of each plate fared.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "lanetools/samples/Summarize.h"

namespace lanetools {

// By the text of column "plate".
inline std::map<std::string, CStateCounts> PlateStates(const std::vector<CSampleRow>& rows) {
    std::map<std::string, CStateCounts> plates;
    for (const CSampleRow& row : rows)
        plates[row.plate].Add(row.state);
    return plates;
}

}  // namespace lanetools
