// SPDX-License-Identifier: MIT
// The curves of one sample for the page.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "lanetools/samples/StoredSample.h"

namespace lanetools {

// The processed curves and the bases of a called sample (PackedTrace in page/src/data.ts); null when the curves cannot
// be read.
nlohmann::ordered_json PackTrace(const CStoredSample& sample);

// The raw curves and the current of the raw sample at `path` (PackedRaw), one value per two scans; null when it cannot
// be read or has no scans.
nlohmann::ordered_json PackRaw(const std::string& path);

}  // namespace lanetools
