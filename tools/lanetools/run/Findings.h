// SPDX-License-Identifier: MIT
// Reasons not to start a run: everything that would cost results, or that the program would ignore without a word.
#pragma once

#include <string>
#include <vector>

#include "lanetools/run/RunPlan.h"

namespace lanetools {

class CFindings {
  public:
    // A finding about `subject` (a path, a word of the command line, a library) as a line "SUBJECT: TEXT".
    void Add(const std::string& subject, const std::string& text);
    const std::vector<std::string>& Lines() const { return lines; }

  private:
    std::vector<std::string> lines;
};

// One check. A new one is a function of this form, declared in Checks.h, and an entry of the table in Findings.cpp.
using Check = void (*)(const CRunPlan& plan, CFindings& findings);

// All findings, each as one line of UTF-8.
std::vector<std::string> FindAll(const CRunPlan& plan);

}  // namespace lanetools
