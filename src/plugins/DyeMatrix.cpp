// SPDX-License-Identifier: MIT
// The dye matrix file:
//
//   Where            What
//   bytes 0 to 3     the order of the file's rows and columns: A, C, T and G in upper case, each once
//   rest of line 1   ignored, including the line feed
//   after it         16 decimal numbers with any white space between them, row after row
//
// The number in row i, column j of the file belongs to letters i and j of the first line. A file in any other form is
// damaged, and so is one with numbers that are missing or too large for a 32-bit float.
#include "plugins/DyeMatrix.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <system_error>

#include "platform/Ascii.h"
#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "plugins/BaseCallerSet.h"

namespace {

constexpr std::string_view rowOrder = "ACTG";
constexpr const char* installedFile = "C://Program Files//Corvane Instrument//Quillion//bin//dyeMethod1.ini";
constexpr const char* fileName = "dyeMethod1.ini";

using RowIndices = std::array<std::size_t, 4>;

// The index in the matrix of each row of the file; nothing unless all four letters are there.
std::optional<RowIndices> TakeOrder(std::string_view& text) {
    RowIndices order{};
    std::array<bool, 4> seen{};
    if (text.size() < order.size()) return std::nullopt;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const std::size_t row = rowOrder.find(text[i]);
        if (row == std::string_view::npos || seen[row]) return std::nullopt;
        seen[row] = true;
        order[i] = row;
    }
    text.remove_prefix(order.size());
    return order;
}

std::optional<float> TakeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\v\f"), text.size()));
    // from_chars does not accept a plus sign.
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    float number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(end - text.data());
    // strtof gives 0 or a denormal for a number too small for a 32-bit float, which is fine, and infinity for one too
    // large.
    if (error == std::errc::result_out_of_range)
        number = std::strtof(std::string(text.substr(0, length)).c_str(), nullptr);
    else if (error != std::errc())
        return std::nullopt;
    if (!std::isfinite(number)) return std::nullopt;
    text.remove_prefix(length);
    return number;
}

std::optional<Matrix4> ParseMatrix(std::string_view text) {
    const auto order = TakeOrder(text);
    if (!order) return std::nullopt;
    platform::TakeLine(text);
    Matrix4 matrix{};
    for (const std::size_t row : *order) {
        for (const std::size_t column : *order) {
            const auto number = TakeNumber(text);
            if (!number) return std::nullopt;
            matrix[row][column] = *number;
        }
    }
    return matrix;
}

}  // namespace

CDyeMatrix::CDyeMatrix() {
    SetIdentity();
}

void CDyeMatrix::SetIdentity() {
    values = {};
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i][i] = 1.0f;
}

bool CDyeMatrix::Parse(const std::string& text) {
    SetIdentity();
    const auto matrix = ParseMatrix(text);
    if (matrix) values = *matrix;
    return matrix.has_value();
}

float** CDyeMatrix::RowPointers() {
    handedOut = values;
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = handedOut[i].data();
    return rows.data();
}

void CBaseCallerSet::ReadDyeMatrix() {
    if (!dyeMatrix) dyeMatrix = std::make_unique<CDyeMatrix>();
    dyeMatrix->SetIdentity();
    for (const std::string& path : {std::string(installedFile), platform::PathNextToProgram(fileName)}) {
        std::string text;
        const platform::Error error = platform::ReadFile(path, text);
        if (error == ENOENT) continue;
        if (error) {
            platform::Warn({path, " cannot be read: ", error.Text()});
            continue;
        }
        if (!dyeMatrix->Parse(text))
            platform::Warn({path, " is damaged, so bases are called without a separation matrix"});
        return;
    }
}
