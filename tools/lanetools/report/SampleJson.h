// SPDX-License-Identifier: MIT
// One sample as the page gets it.
#pragma once

#include <nlohmann/json.hpp>

#include "lanetools/report/QualityByPosition.h"
#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/Unread.h"

namespace lanetools {

// The row's columns, the description of the run and the curves (Sample in page/src/data.ts). Reads the stored sample
// and, `withRaw` set, the raw one; what cannot be read is not in it, but added to `unread`. A called sample's qualities
// go into `quality`.
nlohmann::ordered_json SampleJson(const CSampleRow& row, bool withRaw, CQualityByPosition& quality, Unread& unread);

}  // namespace lanetools
