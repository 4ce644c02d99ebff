// SPDX-License-Identifier: MIT
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "discovery/SplitPath.h"
#include "lanetools/run/Checks.h"
#include "lanetools/run/Findings.h"
#include "lanetools/run/RunPlan.h"
#include "lanetools/system/Access.h"

namespace lanetools {

namespace {

bool HasControl(const std::string& name) {
    return std::any_of(name.begin(), name.end(), [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; });
}

}  // namespace

void CheckPlatesAreThere(const CRunPlan& plan, CFindings& findings) {
    for (const CPlannedPlate& plate : plan.plates) {
        if (!plate.problem.empty())
            findings.Add(plate.given, "the plate cannot be read: " + plate.problem);
        else if (plate.name.empty())
            findings.Add(plate.given, "a plate needs a folder with a name");
        else if (!plate.mistake.empty())
            findings.Add(plate.given, plate.mistake);
        else if (plate.files.empty() && plate.path.find_first_of("*\\") == std::string::npos)
            findings.Add(plate.given, "the plate holds no samples (.rsd, .esd)");
    }
}

// "*" and "?" are wildcards to the program and "\" separates folders; a line of its log is taken apart at control
// characters.
void CheckNamesAreLiteral(const CRunPlan& plan, CFindings& findings) {
    for (const CPlannedPlate& plate : plan.plates) {
        if (plate.path.find_first_of("*\\") != std::string::npos || HasControl(plate.path))
            findings.Add(plate.path, "the program does not take a path with *, \\ or a control character literally");
        for (const std::string& file : plate.files) {
            if (file.find_first_of("*?\\") != std::string::npos || HasControl(file))
                findings.Add(plate.path + '/' + file,
                             "the program does not take a name with *, ?, \\ or a control character literally");
            if (WithoutExtension(file).empty())
                findings.Add(plate.path + '/' + file, "a sample needs a name before its extension");
        }
    }
    if (plan.output.find('\\') != std::string::npos) findings.Add(plan.output, "\\ separates folders to the program");
}

void CheckStemsDiffer(const CRunPlan& plan, CFindings& findings) {
    for (const CPlannedPlate& plate : plan.plates) {
        std::map<std::string, std::string> fileOf;
        for (const std::string& file : plate.files) {
            const auto [first, isNew] = fileOf.emplace(WithoutExtension(file), file);
            if (!isNew)
                findings.Add(plate.path + '/' + file,
                             "it shares its result with " + first->second + ", and would not be called");
        }
    }
}

// The logs of a plate are in its folder.
void CheckPlatesAreWritable(const CRunPlan& plan, CFindings& findings) {
    for (const CPlannedPlate& plate : plan.plates) {
        if (!plate.problem.empty()) continue;
        if (const std::string reason = WhyNoFilesIn(plate.path); !reason.empty())
            findings.Add(plate.path, "no log can be written there: " + reason);
        for (const char* log : {"basecall.log", "log.xml"})
            if (const std::string reason = WhyNotWritable(plate.path + '/' + log); !reason.empty())
                findings.Add(plate.path + '/' + log, "the log cannot be written: " + reason);
    }
}

}  // namespace lanetools
