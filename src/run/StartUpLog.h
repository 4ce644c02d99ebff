// SPDX-License-Identifier: MIT
// The start-up log, BaseCallStartUp.log next to the program: the command line of the last run and, if it was
// unattended, the texts of Report. It is opened and closed for every entry. If it cannot be written the run goes on
// without it.
#pragma once

#include <string_view>

namespace startuplog {

// Clears the log of an earlier run and writes the first line.
void Begin();
// Adds `text` unchanged.
void Append(std::string_view text);

}  // namespace startuplog
