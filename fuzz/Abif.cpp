// SPDX-License-Identifier: MIT
// An instrument's file gives a complete sample or is refused.
#include <algorithm>

#include "Fuzz.h"
#include "lanetools/import/AbifDirectory.h"
#include "lanetools/import/InstrumentSample.h"
#include "lanetools/import/RawSeries.h"
#include "lanetools/samples/Well.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const lanetools::CInstrumentSample sample =
            lanetools::ReadInstrumentSample(std::as_bytes(std::span(data, size)));
        const CSampleInfo& info = sample.info;
        fuzz::Demand(!sample.scans.empty() && sample.scans.size() <= lanetools::mostScans);
        fuzz::Demand(info.scanCount == sample.scans.size());
        fuzz::Demand(info.wellId.empty() || lanetools::WellName(info.wellId) == info.wellId);
        fuzz::Demand(info.runStart >= 0 && info.runStop >= 0 && info.runTime >= 0);
        for (std::size_t i = 0; i < channelCount; ++i)
            fuzz::Demand(std::string_view("ACGT").find(info.channelBase[i][0]) != std::string_view::npos);
    } catch (const lanetools::CUnusable& unusable) {
        fuzz::Demand(unusable.what()[0] != '\0');
    }
    return 0;
}
