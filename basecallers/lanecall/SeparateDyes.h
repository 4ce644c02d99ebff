// Second stage: what one dye shows in the channels of the others is taken out.
#pragma once

#include "lanecall/Impulses.h"
#include "lanecall/Prepare.h"

namespace lanecall {

struct Separated {
    Curves curves;     // one dye each, in counts
    ScanRange range;   // of the read
    PerChannel noise;  // deviation in the range, in counts
    Matrix matrix;     // row: channel, column: dye, both in the order of the channels; the diagonal is 1 when estimated
    ImpulseLists impulses;
};

// Index in A, C, T, G of each channel's letter, or none when the letters are not those four.
std::optional<std::array<std::size_t, channelCount>> BaseIndices(const Letters& letters);

// Uses the given matrix, or what the peaks themselves show when that is the identity. Throws CUnreadable for a matrix
// without inverse.
Separated SeparateDyes(Prepared prepared, const Letters& letters, const Matrix& given);

}  // namespace lanecall
