// The switches other than the three that name input, and what the help says of them.
#pragma once

#include <string>
#include <vector>

// Their names in upper case, as the command line takes them.
std::vector<std::string> SwitchNames();

// The whole help on standard output, and then a wait for a key.
void ShowHelp();
