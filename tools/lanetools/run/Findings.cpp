// SPDX-License-Identifier: MIT
#include "lanetools/run/Findings.h"

#include <algorithm>

#include "lanetools/run/Checks.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

constexpr Check checks[] = {
    CheckPlatesAreThere, CheckNamesAreLiteral,    CheckStemsDiffer,      CheckPlatesAreWritable,
    CheckInputIsOurs,    CheckSpelling,           CheckParameters,       CheckFastaFile,
    CheckSettings,       CheckLibrariesAreListed, CheckLibrariesLoad,    CheckEntryPoints,
    CheckOutputsDiffer,  CheckOutputIsOutside,    CheckOutputIsWritable, CheckFastaIsWritable,
    CheckRoom,           CheckStoredAreOurs,      CheckStoredCanBeRead,  CheckStoredAreGood,
};

}  // namespace

void CFindings::Add(const std::string& subject, const std::string& text) {
    const std::string line = OneLine(ToUtf8(subject + ": " + text));
    if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(line);
}

std::vector<std::string> FindAll(const CRunPlan& plan) {
    CFindings findings;
    for (const Check check : checks)
        check(plan, findings);
    return findings.Lines();
}

}  // namespace lanetools
