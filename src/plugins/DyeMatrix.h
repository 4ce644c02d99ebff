// SPDX-License-Identifier: MIT
// How strongly each of the four dyes shows in each of the four channels.
#pragma once

#include <array>
#include <string>

#include "samplestore/SampleInfo.h"

// 4 rows of 4 factors, rows and columns in the base order A, C, T, G.
class CDyeMatrix {
  public:
    CDyeMatrix();  // the identity
    // The rows in the form that a library takes: 4 pointers to 4 floats each, owned by this object. They point to a
    // copy, refreshed at each call, so a library may write to it.
    float** RowPointers();
    const Matrix4& Values() const { return values; }
    void SetIdentity();
    // Parses the text of a dye matrix file (format: see DyeMatrix.cpp). False for a damaged one, which gives the
    // identity.
    bool Parse(const std::string& text);

  private:
    Matrix4 values{};
    Matrix4 handedOut{};
    std::array<float*, 4> rows{};
};
