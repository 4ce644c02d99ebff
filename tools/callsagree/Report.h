// SPDX-License-Identifier: MIT
// Compares all records and makes the table of the results.
#pragma once

#include <string>
#include <vector>

#include "callsagree/Alignment.h"
#include "callsagree/Fasta.h"

namespace callsagree {

struct Comparison {
    struct Row {
        std::string stem;
        Agreement agreement;
    };
    std::vector<Row> rows;  // in the order of the truth, one for each call of a record
    Agreement total;
    std::vector<std::string> missing;  // stems of true records without a call, or whose calls have no bases
    std::vector<std::string> unknown;  // stems of calls for which there is no truth
};

Comparison Compare(const std::vector<FastaRecord>& truth, const std::vector<FastaRecord>& calls);

// The table as text, with a line for missing and one for unknown records if there are any.
std::string Table(const Comparison& comparison);

}  // namespace callsagree
