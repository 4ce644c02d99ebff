// SPDX-License-Identifier: MIT
// The spacing of the bases in real runs.
#pragma once

namespace samplegen {

// Scans from base n (counted from 0) to the next: 11.4 at base 30, 14.9 at base 400, where it is widest, 12.5 at base
// 900 and 10 from base 1200 on.
double RealSpacing(double n);

}  // namespace samplegen
