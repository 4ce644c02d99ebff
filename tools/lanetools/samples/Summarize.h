// SPDX-License-Identifier: MIT
// All rows of a summary, and what they come to.
#pragma once

#include <cstddef>
#include <vector>

#include "lanetools/samples/RawPlate.h"
#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/StoredSample.h"

namespace lanetools {

// One row per raw sample and output folder of its plate (one per raw sample of a plate without output folder), and one
// per stored sample that belongs to no raw sample; sorted by plate, well and file. `outputs` may hold folders without
// stored samples, whose raw samples are all missing. Plates that are not wanted have rows only in their output folders.
// Shows progress; throws CInterrupted after Ctrl-C.
//
// An output folder belongs to the plate whose name, "_", a code and outputSuffix make its name; where these are several
// ("p" and "p_MKA" with "p_MKA_LC1_QX1"), to the one of which most samples are (IsResultOf), and of equals to the one
// with the longest name. It belongs to none if no sample matches although one could be read.
std::vector<CSampleRow> Summarize(const std::vector<COutputFolder>& outputs, const std::vector<CRawPlate>& plates);

// What could not be read for them.
Unread UnreadOf(const std::vector<CSampleRow>& rows);

struct CStateCounts {
    std::size_t called = 0, failed = 0, missing = 0, damaged = 0;

    void Add(SampleState state);
    std::size_t All() const { return called + failed + missing + damaged; }
    // True when at least `percent` of all are called; of nothing, nothing is missing.
    bool Passes(double percent) const {
        return static_cast<double>(called) * 100 >= percent * static_cast<double>(All());
    }
};

CStateCounts CountStates(const std::vector<CSampleRow>& rows);

}  // namespace lanetools
