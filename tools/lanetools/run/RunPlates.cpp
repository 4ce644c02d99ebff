// SPDX-License-Identifier: MIT
#include "lanetools/run/RunPlates.h"

#include <algorithm>
#include <cstddef>
#include <list>
#include <string>
#include <vector>

#include "lanetools/run/Libraries.h"
#include "lanetools/run/PlateRun.h"
#include "lanetools/system/Child.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"

namespace lanetools {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

std::vector<CChild*> ChildrenOf(std::list<CPlateRun>& runs) {
    std::vector<CChild*> children;
    for (CPlateRun& run : runs)
        if (CChild* const child = run.Child()) children.push_back(child);
    return children;
}

// Gives them a moment to end by themselves.
void EndAll(std::list<CPlateRun>& runs) {
    constexpr milliseconds patience{2000}, look{20};
    std::vector<CChild*> children = ChildrenOf(runs);
    for (const CChild* child : children)
        child->Ask();
    const auto start = steady_clock::now();
    bool areKilled = false;
    while (!children.empty()) {
        CChild::Wait(children, look);
        std::erase_if(children, [](const CChild* child) { return child->IsEnded(); });
        if (areKilled || steady_clock::now() - start < patience) continue;
        areKilled = true;
        for (const CChild* child : children)
            child->Kill();
    }
}

}  // namespace

CRunOutcome RunPlates(const CRunPlan& plan) {
    std::size_t samples = 0;
    for (const CPlannedPlate& plate : plan.plates)
        samples += plate.files.size() * plan.libraries.chosen.size();
    CProgress progress("samples", samples);
    CRunOutcome outcome;
    std::list<CPlateRun> active;
    std::size_t next = 0;
    while (next < plan.plates.size() || !active.empty()) {
        if (IsInterrupted()) EndAll(active);
        CheckInterrupt();
        while (active.size() < plan.options.jobs && next < plan.plates.size())
            active.emplace_back(plan, next++, progress);
        for (CPlateRun& run : active)
            run.GoOn();
        CChild::Wait(ChildrenOf(active), milliseconds(100));
        if (IsInterrupted()) continue;
        for (CPlateRun& run : active)
            run.Look();
        for (auto run = active.begin(); run != active.end();) {
            if (!run->IsDone()) {
                ++run;
                continue;
            }
            outcome.hasWorked = outcome.hasWorked || run->HasWorked();
            outcome.isIncomplete = outcome.isIncomplete || run->IsIncomplete();
            outcome.losses.insert(run->Lost().begin(), run->Lost().end());
            run = active.erase(run);
        }
    }
    return outcome;
}

}  // namespace lanetools
