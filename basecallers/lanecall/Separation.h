// Taking the dyes apart: how far each dye shows in each channel, and its undoing.
#pragma once

#include <optional>

#include "lanecall/Curves.h"

namespace lanecall {

Matrix Identity();
bool IsIdentity(const Matrix& matrix);
// None when the matrix cannot be inverted with a sound result.
std::optional<Matrix> Invert(const Matrix& matrix);
// Replaces the channels' values at every scan by the product of `inverse` with them.
void Separate(Curves& curves, const Matrix& inverse);

}  // namespace lanecall
