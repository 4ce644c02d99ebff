// The start-up log, BaseCallStartUp.log beside the program: the command line of the last run, and what Report said in
// an unattended one. It is opened and closed for every entry. A log that cannot be written is done without.
#pragma once

#include <string_view>

namespace startuplog {

// Empties the log of an earlier run and writes the first line.
void Begin();
// Adds `text` as it is.
void Append(std::string_view text);

}  // namespace startuplog
