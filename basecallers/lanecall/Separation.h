// SPDX-License-Identifier: MIT
// The arithmetic of the separation matrix.
#pragma once

#include <optional>

#include "lanecall/Curves.h"

namespace lanecall {

Matrix Identity();
bool IsIdentity(const Matrix& matrix);
// None if an element is not below 1000 or the matrix is (nearly) singular.
std::optional<Matrix> Invert(const Matrix& matrix);
// At every scan: dyes = inverse x channels, in place.
void Separate(Curves& curves, const Matrix& inverse);

}  // namespace lanecall
