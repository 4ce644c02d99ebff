// SPDX-License-Identifier: MIT
// The exponential function, made of additions, multiplications and divisions: unlike that of the standard library it
// has the same bits on every machine.
#pragma once

namespace samplegen {

// e to the power of x, for x from -40 to 40: the Taylor series for x / 1024, squared ten times.
inline double Exp(double x) {
    constexpr int halvings = 10;
    const double y = x / (1 << halvings);
    double power = 1 + y * (1 + y / 2 * (1 + y / 3 * (1 + y / 4 * (1 + y / 5))));
    for (int i = 0; i < halvings; ++i)
        power *= power;
    return power;
}

}  // namespace samplegen
