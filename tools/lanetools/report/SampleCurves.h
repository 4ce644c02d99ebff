// SPDX-License-Identifier: MIT
// The curves of one sample for the page.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "lanetools/samples/StoredSample.h"
#include "lanetools/samples/Unread.h"

namespace lanetools {

// The processed curves and the bases of a called sample (PackedTrace in page/src/data.ts); null when it has no scans,
// or when they cannot be read, which is then in `unread`.
nlohmann::ordered_json PackTrace(const CStoredSample& sample, Unread& unread);

// The raw curves and the current of the raw sample at `path` (PackedRaw), one value per two scans; null for the same
// reasons.
nlohmann::ordered_json PackRaw(const std::string& path, Unread& unread);

}  // namespace lanetools
