// How far apart the bases of real runs come.
#pragma once

namespace samplegen {

// Scans between base n and the next, n counted from 0: 11.4 at base 30, 14.9 at its greatest, near base 400, and 10 to
// 12.5 from base 900 on.
double RealSpacing(double n);

}  // namespace samplegen
