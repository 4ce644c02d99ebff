// SPDX-License-Identifier: MIT
#include "callsagree/Report.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace callsagree {

namespace {

std::string Line(const std::string& name, std::size_t nameWidth, const Agreement& counts) {
    char numbers[160];
    std::snprintf(numbers, sizeof numbers, "%8zu %8zu %8zu %8zu %7zu %7zu %7zu %9.2f %%\n", counts.truth, counts.called,
                  counts.Covered(), counts.matches, counts.substitutions, counts.insertions, counts.deletions,
                  counts.Identity());
    return name + std::string(nameWidth - name.size(), ' ') + numbers;
}

std::string Names(const std::string& what, const std::vector<std::string>& names) {
    if (names.empty()) return "";
    std::string line = what + ":";
    for (const std::string& name : names)
        line += " " + name;
    return line + "\n";
}

}  // namespace

Comparison Compare(const std::vector<FastaRecord>& truth, const std::vector<FastaRecord>& calls) {
    Comparison comparison;
    std::set<std::string> known;
    for (const FastaRecord& record : truth) {
        known.insert(record.stem);
        bool isCalled = false;
        for (const FastaRecord& call : calls) {
            if (call.stem != record.stem || call.bases.empty()) continue;
            comparison.rows.push_back({record.stem, Align(record.bases, call.bases)});
            comparison.total += comparison.rows.back().agreement;
            isCalled = true;
        }
        if (!isCalled) comparison.missing.push_back(record.stem);
    }
    for (const FastaRecord& call : calls)
        if (!known.contains(call.stem)) comparison.unknown.push_back(call.stem);
    return comparison;
}

std::string Table(const Comparison& comparison) {
    std::size_t width = std::string("record").size();
    for (const auto& row : comparison.rows)
        width = std::max(width, row.stem.size());
    const std::string heading = "   truth   called  covered  matches   subst  insert  delete    identity\n";
    const std::string rule = std::string(width + heading.size() - 1, '-') + "\n";
    std::string table = "record" + std::string(width - 6, ' ') + heading + rule;
    for (const auto& row : comparison.rows)
        table += Line(row.stem, width, row.agreement);
    table += rule + Line("total", width, comparison.total);
    return table + Names("not called", comparison.missing) + Names("called without a truth", comparison.unknown);
}

}  // namespace callsagree
