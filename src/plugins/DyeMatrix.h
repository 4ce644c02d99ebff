// How far each of the four dyes shows in each of the four channels.
#pragma once

#include <array>
#include <string>

#include "samplestore/SampleInfo.h"

// 4 rows of 4, rows and columns in the base order A, C, T, G.
class CDyeMatrix {
  public:
    // The identity.
    CDyeMatrix();
    // The rows as a library takes them: 4 pointers to 4 floats, owned by the matrix. A library may write through them;
    // the copy handed out is refreshed at each call.
    float** RowPointers();
    const Matrix4& Values() const { return values; }
    void SetIdentity();
    // Reads the text of a dye matrix file (see DyeMatrix.cpp for the format); the identity, and false, when it is
    // damaged.
    bool Parse(const std::string& text);

  private:
    Matrix4 values{};
    Matrix4 handedOut{};
    std::array<float*, 4> rows{};
};
