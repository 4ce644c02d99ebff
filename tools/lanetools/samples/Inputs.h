// SPDX-License-Identifier: MIT
// The folders that summary and report work on.
#pragma once

#include <string>
#include <vector>

#include "lanetools/samples/RawPlate.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/samples/Unread.h"

namespace lanetools {

struct CInputs {
    std::vector<COutputFolder> outputs;
    std::vector<CRawPlate> plates;
    Unread unread;
};

// The output folders of `roots` and the plates of `raw`, which may be empty. Without plates, only output folders with a
// stored sample. If all of `roots` are output folders themselves, a plate that was only found in a folder of plates is
// not wanted unless it has one of them. Throws CRefused if there is nothing to work on.
CInputs FindInputs(const std::vector<std::string>& roots, const std::vector<std::string>& raw);

}  // namespace lanetools
