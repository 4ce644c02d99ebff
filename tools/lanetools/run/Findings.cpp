#include "lanetools/run/Findings.h"

#include "lanetools/run/Checks.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

constexpr Check checks[] = {
    CheckPlatesAreThere, CheckNamesAreLiteral, CheckStemsDiffer, CheckPlatesAreWritable,
    CheckInputIsOurs, CheckSpelling, CheckParameters, CheckFastaFile,
    CheckSettings, CheckLibrariesAreListed, CheckLibrariesLoad, CheckEntryPoints,
    CheckOutputsDiffer, CheckOutputIsOutside, CheckOutputIsWritable, CheckRoom,
    CheckStoredAreOurs, CheckStoredAreGood,
};

}  // namespace

void CFindings::Add(const std::string& subject, const std::string& text) {
    lines.push_back(OneLine(ToUtf8(subject + ": " + text)));
}

std::vector<std::string> FindAll(const CRunPlan& plan) {
    CFindings findings;
    for (const Check check : checks)
        check(plan, findings);
    return findings.Lines();
}

}  // namespace lanetools
