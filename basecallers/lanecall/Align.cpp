// SPDX-License-Identifier: MIT
#include "lanecall/Align.h"

#include <cstddef>
#include <utility>

#include "lanecall/Mobility.h"
#include "lanecall/Sharpen.h"

namespace lanecall {

Sharpened SharpenPeaks(Measured measured) {
    const HumpFilter filter = HumpFilterFor(measured.widths, measured.spacing.scans);
    Curves flat, sharp;
    for (std::size_t c = 0; c < channelCount; ++c) {
        flat[c] = WithoutHumps(measured.curves[c], filter);
        sharp[c] = Sharpen(flat[c], measured.range, measured.widths, measured.spacing.scans, measured.noise[c]);
    }
    return {std::move(measured.curves),
            std::move(flat),
            std::move(sharp),
            measured.range,
            std::move(measured.spacing),
            std::move(measured.widths),
            std::move(measured.noise),
            filter};
}

Aligned Align(Sharpened sharpened, const Letters& letters) {
    const ChannelTracks shifts = EstimateMobility(sharpened.sharp, sharpened.range, sharpened.spacing, letters);
    ShiftCurves(sharpened.curves, sharpened.range, shifts);
    ShiftCurves(sharpened.flat, sharpened.range, shifts);
    ShiftCurves(sharpened.sharp, sharpened.range, shifts);
    return sharpened;
}

}  // namespace lanecall
