// SPDX-License-Identifier: MIT
#include "lanecall/SmoothFit.h"

#include <array>
#include <cstddef>

namespace lanecall {

namespace {

// Solves a symmetric positive definite system with two bands beside its diagonal, in place: rows[i] holds the elements
// i to i + 2 of row i, `right` the right side and then the solution.
void SolveBanded(std::vector<std::array<double, 3>>& rows, std::vector<double>& right) {
    const std::size_t count = rows.size();
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t k = 1; k <= 2 && i + k < count; ++k) {
            const double factor = rows[i][k] / rows[i][0];
            for (std::size_t j = k; j <= 2; ++j)
                rows[i + k][j - k] -= factor * rows[i][j];
            right[i + k] -= factor * right[i];
        }
    for (std::size_t i = count; i-- > 0;) {
        for (std::size_t k = 1; k <= 2 && i + k < count; ++k)
            right[i] -= rows[i][k] * right[i + k];
        right[i] /= rows[i][0];
    }
}

}  // namespace

std::vector<double> SmoothFit(const std::vector<double>& values, const std::vector<double>& weights, double stiffness,
                              double level) {
    constexpr double minWeight = 1e-9;  // keeps the system solvable when all weights are 0
    const std::size_t count = values.size();
    std::vector<std::array<double, 3>> rows(count);
    std::vector<double> right(count);
    for (std::size_t i = 0; i < count; ++i) {
        rows[i][0] = weights[i] + minWeight;
        right[i] = rows[i][0] * values[i];
    }
    for (std::size_t i = 0; i + 1 < count; ++i) {
        rows[i][0] += level;
        rows[i + 1][0] += level;
        rows[i][1] -= level;
    }
    for (std::size_t i = 0; i + 2 < count; ++i) {
        constexpr double bend[3] = {1, -2, 1};
        for (std::size_t j = 0; j < 3; ++j)
            for (std::size_t k = j; k < 3; ++k)
                rows[i + j][k - j] += stiffness * bend[j] * bend[k];
    }
    SolveBanded(rows, right);
    return right;
}

}  // namespace lanecall
