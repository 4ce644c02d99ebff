// SPDX-License-Identifier: MIT
// The words of the command line grouped into switches, and the input they name.
#pragma once

#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"

struct CParsedSwitch {
    std::string name;                     // in upper case
    std::vector<std::string> parameters;  // as typed
};

class CCommandLine {
  public:
    std::vector<CParsedSwitch> switches;  // in the order of the command line, with repeats
    std::vector<std::string> plates;      // plate folders
    std::vector<std::string> files;       // sample files
    std::vector<std::string> knownNames;  // the three input switches, then the others
    std::vector<std::string> dropped;     // words before the first switch

    // Groups argv[1] to argv[argc - 1] and expands the input switches. `switchNames` are the other switches in upper
    // case; `patterns` are the types of sample file to look for in folders. Nothing is an error: a word that is not a
    // switch is a parameter of the switch before it, or is added to `dropped` when there is none.
    CCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames,
                 const std::vector<CFileTypeFilter>& patterns);
    virtual ~CCommandLine() = default;

  protected:
    // Only groups the words. A class that overrides OnOtherSwitch uses this constructor and calls ExpandInputs from its
    // own: a virtual call from the constructor above would not reach the override.
    CCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames);

    // Fills `plates` and `files` from the input switches and passes every other switch to OnOtherSwitch, in the order
    // of the command line.
    void ExpandInputs(const std::vector<CFileTypeFilter>& patterns);

    virtual void OnOtherSwitch(const CParsedSwitch&) {}
};
