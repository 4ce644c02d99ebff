// SPDX-License-Identifier: MIT
// From a called sample to a read.
#pragma once

#include "lanetools/export/ExportOptions.h"
#include "lanetools/export/Read.h"
#include "lanetools/samples/StoredSample.h"

namespace lanetools {

// Fills in letters, Phred values and positions from a called sample, cut or masked. Bases that the caller has marked as
// hidden (descriptor 2) are skipped, as in the program's own exports. The adapter is removed first, then the rest is
// trimmed by its qualities; both look at the called letters. False if fewer than minLength bases are kept, or if no
// letter remains.
bool MakeRead(const CStoredSample& sample, const CReadRules& rules, CRead& read);

}  // namespace lanetools
