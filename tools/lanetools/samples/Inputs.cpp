// SPDX-License-Identifier: MIT
#include "lanetools/samples/Inputs.h"

#include <algorithm>

#include "lanetools/samples/ListEntries.h"

namespace lanetools {

CInputs FindInputs(const std::vector<std::string>& roots, const std::vector<std::string>& raw) {
    CInputs inputs;
    if (raw.empty()) {
        inputs.outputs = FindOutputs(roots, inputs.unread);
        return inputs;
    }
    inputs.plates = FindRawPlates(raw, inputs.unread);
    inputs.outputs = ListOutputs(roots, inputs.unread);
    const bool isPlatesOnly = std::all_of(roots.begin(), roots.end(), [&](const std::string& root) {
        const std::string path = Resolve(root).string();
        return std::any_of(inputs.outputs.begin(), inputs.outputs.end(),
                           [&](const COutputFolder& output) { return output.path == path; });
    });
    for (CRawPlate& plate : inputs.plates)
        plate.isWanted = plate.isWanted || !isPlatesOnly;
    return inputs;
}

}  // namespace lanetools
