// SPDX-License-Identifier: MIT
// The annotation: measurements of a read that are reported in addition to its calls.
#pragma once

#include <cstdint>
#include <vector>

#include "lanecall/CallBases.h"
#include "lanecall/Curves.h"
#include "lanecall/Track.h"

namespace lanecall {

struct Annotation {
    std::vector<std::int32_t> zones;       // two per zone: its first scan, and the one after its last
    std::vector<std::int32_t> zoneValues;  // eight per zone: signal and noise of channel 1, of channel 2 ..., in counts
    std::vector<float> fwhm;               // full width of a peak at half maximum, in scans
    std::vector<std::int32_t> gaps;        // spacing of the bases, in scans
    std::vector<std::int32_t> positions;   // the scan to which the entries of `fwhm` and `gaps` belong
    float separationQuality = 0;           // 0 to 1; 1 if no other dye is seen under the called peaks
    PerChannel separationQualities{};      // the same for the calls of each channel
};

// These add to `notes`. Signal and noise in `count` zones of equal length; `curves` are separated, in counts:
void MeasureZones(Annotation& notes, const Curves& curves, ScanRange range, int count);
// Width and spacing at every `step`th scan of the range:
void MeasureSpacing(Annotation& notes, ScanRange range, const CTrack& widths, const CTrack& spacing, int step);
// The separation qualities, from the heights of the processed curves at the calls:
void MeasureSeparation(Annotation& notes, const std::vector<Call>& calls, const Curves& processed);

}  // namespace lanecall
