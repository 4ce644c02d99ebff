// The switches other than the three that name input, and what the help says of them.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

inline constexpr std::size_t switchCount = 17;

// Upper-case names. The help lines below stand in the same order.
extern const std::array<std::string_view, switchCount> switchNameTable;
extern const std::array<std::string_view, switchCount> helpLines;

// The names as the command line takes them.
std::vector<std::string> SwitchNames();

// The whole help on standard output, and then a wait for a key.
void ShowHelp();
