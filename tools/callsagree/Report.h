// The comparison of all records, and the table of it.
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
    std::vector<Row> rows;  // in the order of the truth; more than one for a record that was called more than once
    Agreement total;
    std::vector<std::string> missing;  // stems of the truth that were not called, or without a base
    std::vector<std::string> unknown;  // stems of calls that have no truth
};

Comparison Compare(const std::vector<FastaRecord>& truth, const std::vector<FastaRecord>& calls);

// The table for standard output, with a line for missing and one for unknown records.
std::string Table(const Comparison& comparison);

}  // namespace callsagree
