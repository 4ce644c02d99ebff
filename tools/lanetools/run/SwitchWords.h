// The switches that the program is to be run with, as they stand on the command line of lanetools.
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
    // The libraries that -BC names, with repeats, in the order of their passes; empty when the default one is to run.
    std::vector<std::string> Libraries() const;
    // The first parameters of all switches of that name which have one.
    std::vector<std::string> FilesOf(Switch id) const;
    // Operations on each sample, the base call counted once.
    std::size_t Operations() const;

    // The words again, with a base call ahead of them when no -BC is among them.
    std::vector<std::string> Words() const;
    // Words for a start that goes on with `libraries` (empty: with the default one) where another one ended: the file
    // of -FA is added to instead of being made anew.
    std::vector<std::string> WordsToGoOn(const std::vector<std::string>& libraries) const;
};

// How many parameters of a switch the program reads.
std::size_t MostParameters(Switch id);

}  // namespace lanetools
