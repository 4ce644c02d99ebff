// The words of the command line, grouped into switches, and the input that they name.
#pragma once

#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"

struct CParsedSwitch {
    std::string name;                     // in upper case
    std::vector<std::string> parameters;  // as typed; words that are no switch
};

class CCommandLine {
  public:
    std::vector<CParsedSwitch> switches;  // in the order of the command line, repeats included
    std::vector<std::string> plates;      // plate folders
    std::vector<std::string> files;       // sample files
    std::vector<std::string> knownNames;  // the three input switches, then the others
    std::vector<std::string> dropped;     // words ahead of the first switch

    // Groups argv[1] and what follows, and expands the input switches. `switchNames` are the other switches in upper
    // case; `patterns` are the types of the sample files. Nothing here is an error: a word that is no
    // switch is a parameter of the switch before it, and is dropped where there is none.
    CCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames,
                 const std::vector<CFileTypeFilter>& patterns);
    virtual ~CCommandLine() = default;

  protected:
    // Groups only. A class that overrides OnOtherSwitch builds its base with this and calls ExpandInputs in its own
    // constructor: not before that does a virtual call reach the override.
    CCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames);

    // Fills `plates` and `files` from the input switches and hands every other switch to OnOtherSwitch, all in the
    // order of the command line.
    void ExpandInputs(const std::vector<CFileTypeFilter>& patterns);

    virtual void OnOtherSwitch(const CParsedSwitch&) {}
};
