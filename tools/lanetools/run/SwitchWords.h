// SPDX-License-Identifier: MIT
// The switches for the program, as given on the command line of lanetools.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "run/CommandLine.h"
#include "run/Switches.h"

namespace lanetools {

// Grouped into switches and parameters as the program groups them. Nothing is looked up or expanded.
class CSwitchWords : public CCommandLine {
  public:
    explicit CSwitchWords(const std::vector<std::string>& words);

    bool Has(Switch id) const;
    // The libraries that -BC names, with repeats, in the order of their passes; empty if the default one is to run.
    std::vector<std::string> Libraries() const;
    // The first parameter of each switch of that name that has one.
    std::vector<std::string> FilesOf(Switch id) const;
    // Operations on each sample, the base call counted once.
    std::size_t Operations() const;

    // The words again, with -BC before them if they do not contain it.
    std::vector<std::string> Words() const;
    // Words for a start that continues with `libraries` (empty: with the default one) where another start ended: it
    // appends to the file of -FA and does not create it again.
    std::vector<std::string> WordsToGoOn(const std::vector<std::string>& libraries) const;
};

// How many parameters of a switch the program reads.
std::size_t MostParameters(Switch id);

}  // namespace lanetools
