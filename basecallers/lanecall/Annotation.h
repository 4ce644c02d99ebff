// The measurements that are reported beside the calls.
#pragma once

#include <cstdint>
#include <vector>

#include "lanecall/CallBases.h"

namespace lanecall {

struct Annotation {
    std::vector<std::int32_t> zones;       // start and end scan of each zone
    std::vector<std::int32_t> zoneValues;  // signal and noise of channels 1 to 4, eight per zone, in raw units
    std::vector<float> fwhm;               // peak width at half maximum, in scans
    std::vector<std::int32_t> gaps;        // scans from base to base
    std::vector<std::int32_t> positions;   // the scan at which the two were measured
    float separationQuality = 0;           // 0 to 1, 1 for nothing of the other dyes under the called peaks
    PerChannel separationQualities{};
};

// Signal and noise in `count` zones of equal length. Takes separated curves in raw units.
void MeasureZones(Annotation& notes, const Curves& curves, ScanRange range, int count);
// One measurement every `step` scans.
void MeasureSpacing(Annotation& notes, ScanRange range, const CTrack& widths, const CTrack& spacing, int step);
void MeasureSeparation(Annotation& notes, const std::vector<Call>& calls, const Curves& processed);

}  // namespace lanecall
