// SPDX-License-Identifier: MIT
#include "samplegen/Dyes.h"

#include <cstdio>

namespace samplegen {

const std::array<Dye, channelCount>& Dyes() {
    static constexpr std::array<Dye, channelCount> dyes = {{
        {"FAM", "520 nm", 1.0, 0.0},
        {"JOE", "550 nm", 0.85, 0.55},
        {"TAMRA", "580 nm", 1.1, -0.45},
        {"ROX", "610 nm", 0.75, 0.2},
    }};
    return dyes;
}

// Dyes that are neighbours in the spectrum overlap most, and each spreads more towards red than towards blue.
Matrix4 CrossTalk(double strength) {
    Matrix4 matrix = {{
        {1.00f, 0.15f, 0.03f, 0.01f},
        {0.55f, 1.00f, 0.22f, 0.05f},
        {0.14f, 0.52f, 1.00f, 0.28f},
        {0.03f, 0.11f, 0.45f, 1.00f},
    }};
    for (std::size_t row = 0; row < channelCount; ++row)
        for (std::size_t column = 0; column < channelCount; ++column)
            if (row != column) matrix[row][column] *= static_cast<float>(strength);
    return matrix;
}

std::string DyeMatrixText(const std::string& baseOrder, const Matrix4& matrix) {
    std::string text = baseOrder + "  row: channel, column: dye\n";
    for (const auto& row : matrix) {
        char line[64];
        std::snprintf(line, sizeof line, "%.4f %.4f %.4f %.4f\n", row[0], row[1], row[2], row[3]);
        text += line;
    }
    return text;
}

}  // namespace samplegen
