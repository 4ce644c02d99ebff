// SPDX-License-Identifier: MIT
#include <cstddef>
#include <string>
#include <vector>

#include "lanetools/run/Checks.h"
#include "lanetools/run/Findings.h"
#include "lanetools/run/RunPlan.h"
#include "lanetools/run/SwitchWords.h"
#include "run/CommandLine.h"
#include "run/Switches.h"

namespace lanetools {

namespace {

constexpr Switch ours[] = {Switch::InputFolders, Switch::InputPlates, Switch::InputFiles, Switch::OutputFolder};

bool IsOurs(const CParsedSwitch& given) {
    for (const Switch id : ours)
        if (IsSwitch(given.name, id)) return true;
    return false;
}

}  // namespace

void CheckInputIsOurs(const CRunPlan& plan, CFindings& findings) {
    for (const CParsedSwitch& given : plan.switches.switches)
        if (IsOurs(given)) findings.Add(given.name, "input and output are given to lanetools itself");
}

void CheckSpelling(const CRunPlan& plan, CFindings& findings) {
    for (const std::string& word : plan.switches.dropped)
        findings.Add(word, "it is not a switch, and the program would ignore it");
    for (const CParsedSwitch& given : plan.switches.switches)
        for (const std::string& word : given.parameters)
            if (word.starts_with('-'))
                findings.Add(word, "it is not a switch, and the program would take it as a parameter of " + given.name);
}

void CheckParameters(const CRunPlan& plan, CFindings& findings) {
    for (const CParsedSwitch& given : plan.switches.switches) {
        const CSwitch* const row = FindSwitch(given.name);
        if (!row || IsOurs(given)) continue;
        for (std::size_t i = MostParameters(row->id); i < given.parameters.size(); ++i)
            if (!given.parameters[i].starts_with('-'))
                findings.Add(given.parameters[i], given.name + " does not take it, and the program would ignore it");
        const bool isOrder = row->id == Switch::BaseOrder && !given.parameters.empty();
        if (isOrder && given.parameters.front().size() != 4)
            findings.Add(given.parameters.front(), given.name + " takes four letters, and the program would ignore it");
    }
}

void CheckFastaFile(const CRunPlan& plan, CFindings& findings) {
    if (plan.plates.size() < 2) return;
    for (const std::string& file : plan.switches.FilesOf(Switch::Fasta))
        findings.Add(file,
                     "-FA creates its file again for each plate, so it would hold only the last one's records; "
                     "-FA_ appends to the file, and -FAG creates one for the run");
}

}  // namespace lanetools
