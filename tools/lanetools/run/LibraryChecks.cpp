// SPDX-License-Identifier: MIT
#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "lanetools/run/Checks.h"
#include "lanetools/run/Findings.h"
#include "lanetools/run/Libraries.h"
#include "lanetools/run/RunPlan.h"
#include "lanetools/run/SwitchWords.h"
#include "run/Switches.h"

namespace lanetools {

namespace {

bool IsUnattended(const CRunPlan& plan) {
    return plan.switches.Has(Switch::Unattended);
}

// The libraries of the passes, each once.
std::set<std::size_t> ChosenOnes(const CRunPlan& plan) {
    std::set<std::size_t> indices;
    for (const CLibraries::Chosen& chosen : plan.libraries.chosen)
        if (chosen.index) indices.insert(*chosen.index);
    return indices;
}

}  // namespace

void CheckSettings(const CRunPlan& plan, CFindings& findings) {
    const CLibraries& libraries = plan.libraries;
    if (libraries.settings.empty())
        findings.Add("basecall.ini", "the registry's Path of [Quillion\\Base Calling] does not lead to it");
    if (!libraries.listError.empty()) findings.Add(libraries.settings, libraries.listError);
}

void CheckLibrariesAreListed(const CRunPlan& plan, CFindings& findings) {
    const CLibraries& libraries = plan.libraries;
    if (libraries.settings.empty()) return;
    if (IsUnattended(plan) && libraries.chosen.empty()) findings.Add("-E", "-BC must name a library with it");
    for (const CLibraries::Chosen& chosen : libraries.chosen) {
        if (chosen.index || chosen.name.starts_with('-')) continue;  // a misspelt switch is a finding already
        if (IsUnattended(plan))
            findings.Add(chosen.name, "with -E the program loads the first library only, and would run that again");
        else if (plan.switches.Libraries().empty())
            findings.Add(libraries.settings, "the default library \"" + chosen.name +
                                                 "\" is not listed there, and the first one would run instead");
        else
            findings.Add(chosen.name,
                         "the library is not listed in " + libraries.settings + ", and another one would run instead");
    }
}

// The program loads all that are listed, so that each of them can end it.
void CheckLibrariesLoad(const CRunPlan& plan, CFindings& findings) {
    for (const CLibrary& library : plan.libraries.known)
        if (!library.accident.empty())
            findings.Add(library.file, "the library " + library.accident + " when it is loaded or released");
    for (const std::size_t index : ChosenOnes(plan)) {
        const CLibrary& library = plan.libraries.known[index];
        if (!library.isLoaded && library.accident.empty()) findings.Add(library.file, "the library does not load");
    }
}

void CheckEntryPoints(const CRunPlan& plan, CFindings& findings) {
    for (const std::size_t index : ChosenOnes(plan)) {
        const CLibrary& library = plan.libraries.known[index];
        if (!library.missing.empty())
            findings.Add(library.file, "the library lacks the entry point " + library.missing);
    }
}

}  // namespace lanetools
