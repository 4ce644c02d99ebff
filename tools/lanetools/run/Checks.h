// SPDX-License-Identifier: MIT
// The checks by subject.
#pragma once

#include "lanetools/run/Findings.h"

namespace lanetools {

// Plates and their samples.
void CheckPlatesAreThere(const CRunPlan& plan, CFindings& findings);
void CheckNamesAreLiteral(const CRunPlan& plan, CFindings& findings);
void CheckStemsDiffer(const CRunPlan& plan, CFindings& findings);
void CheckPlatesAreWritable(const CRunPlan& plan, CFindings& findings);
// Switches.
void CheckInputIsOurs(const CRunPlan& plan, CFindings& findings);
void CheckSpelling(const CRunPlan& plan, CFindings& findings);
void CheckParameters(const CRunPlan& plan, CFindings& findings);
void CheckFastaFile(const CRunPlan& plan, CFindings& findings);
// Libraries.
void CheckSettings(const CRunPlan& plan, CFindings& findings);
void CheckLibrariesAreListed(const CRunPlan& plan, CFindings& findings);
void CheckLibrariesLoad(const CRunPlan& plan, CFindings& findings);
void CheckEntryPoints(const CRunPlan& plan, CFindings& findings);
// Output.
void CheckOutputsDiffer(const CRunPlan& plan, CFindings& findings);
void CheckOutputIsOutside(const CRunPlan& plan, CFindings& findings);
void CheckOutputIsWritable(const CRunPlan& plan, CFindings& findings);
void CheckFastaIsWritable(const CRunPlan& plan, CFindings& findings);
void CheckRoom(const CRunPlan& plan, CFindings& findings);
void CheckStoredAreOurs(const CRunPlan& plan, CFindings& findings);
void CheckStoredCanBeRead(const CRunPlan& plan, CFindings& findings);
void CheckStoredAreGood(const CRunPlan& plan, CFindings& findings);

}  // namespace lanetools
