// SPDX-License-Identifier: MIT
// Second stage: turns channels, which see some light of every dye, into curves of one dye each.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "lanecall/Curves.h"
#include "lanecall/Impulses.h"
#include "lanecall/Prepare.h"

namespace lanecall {

struct Separated {
    Curves curves;     // one dye each, in counts
    ScanRange range;   // of the read
    PerChannel noise;  // standard deviation in the range, in counts
    Matrix matrix;     // that was used; rows and columns in the order of the channels
    ImpulseLists impulses;
};

// The index of each channel's letter in "ACTG"; none if the letters are not these four.
std::optional<std::array<std::size_t, channelCount>> BaseIndices(const Letters& letters);

// `given` has its rows and columns in the order A, C, T, G. If it is the identity, or the letters are not A, C, T and
// G, the matrix is estimated from the peaks. Throws CUnreadable for a matrix that cannot be inverted.
Separated SeparateDyes(Prepared prepared, const Letters& letters, const Matrix& given);

}  // namespace lanecall
