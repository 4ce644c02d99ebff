// SPDX-License-Identifier: MIT
#include "lanecall/Separation.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace lanecall {

Matrix Identity() {
    Matrix matrix{};
    for (std::size_t i = 0; i < 4; ++i)
        matrix[i][i] = 1;
    return matrix;
}

bool IsIdentity(const Matrix& matrix) {
    return matrix == Identity();
}

std::optional<Matrix> Invert(const Matrix& matrix) {
    // Elements are signals relative to a dye's own channel, so about 1 at most. A pivot below 1 in 1000 means that two
    // dyes look alike.
    constexpr double minPivot = 1e-3, maxElement = 1e3;
    Matrix left = matrix, right = Identity();
    for (std::size_t i = 0; i < 4; ++i) {
        std::size_t pivot = i;
        for (std::size_t r = i; r < 4; ++r) {
            for (double value : left[r])
                if (!(std::abs(value) < maxElement)) return std::nullopt;
            if (std::abs(left[r][i]) > std::abs(left[pivot][i])) pivot = r;
        }
        if (!(std::abs(left[pivot][i]) > minPivot)) return std::nullopt;
        std::swap(left[i], left[pivot]);
        std::swap(right[i], right[pivot]);
        const double scale = 1 / left[i][i];
        for (std::size_t k = 0; k < 4; ++k) {
            left[i][k] *= scale;
            right[i][k] *= scale;
        }
        for (std::size_t r = 0; r < 4; ++r) {
            if (r == i) continue;
            const double factor = left[r][i];
            for (std::size_t k = 0; k < 4; ++k) {
                left[r][k] -= factor * left[i][k];
                right[r][k] -= factor * right[i][k];
            }
        }
    }
    return right;
}

void Separate(Curves& curves, const Matrix& inverse) {
    for (std::size_t i = 0; i < curves[0].size(); ++i) {
        const PerChannel seen = {curves[0][i], curves[1][i], curves[2][i], curves[3][i]};
        for (std::size_t c = 0; c < channelCount; ++c)
            curves[c][i] =
                inverse[c][0] * seen[0] + inverse[c][1] * seen[1] + inverse[c][2] * seen[2] + inverse[c][3] * seen[3];
    }
}

}  // namespace lanecall
