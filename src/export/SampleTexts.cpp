// SPDX-License-Identifier: MIT
#include "export/SampleTexts.h"

#include "plugins/BaseCaller.h"

std::string CallerName(const CProcessedTrace& trace) {
    return trace.CallerInfo() ? trace.CallerInfo()->name : std::string();
}
