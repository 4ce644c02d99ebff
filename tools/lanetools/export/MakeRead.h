// From a called sample to a read.
#pragma once

#include "lanetools/export/ExportOptions.h"
#include "lanetools/export/Read.h"
#include "lanetools/samples/StoredSample.h"

namespace lanetools {

// Letters, Phred values and positions of a called sample, cut or masked. Bases that the caller has marked as not to be
// shown (descriptor 2) are left out, as in the program's own exports. The adapter is looked for in all the others, and
// the qualities judge what it leaves. False when fewer than minLength bases are kept, or no letter is left to write.
bool MakeRead(const CStoredSample& sample, const CReadRules& rules, CRead& read);

}  // namespace lanetools
