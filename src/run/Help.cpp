// SPDX-License-Identifier: MIT
// The help of "-H". The line of each switch is in the table in Switches.cpp.
#include <string_view>

#include "platform/Console.h"
#include "run/Switches.h"

namespace {

constexpr std::string_view helpHead =
    "LANEWRIGHT SWITCHES \r\nAll the switches may be passed in any order.\r\n"
    "-ID: supplies input data directory name (containing multiple plates) incl. the full path\r\n"
    "-IP: input plate directory name including the full path\r\n"
    "-IF: supplies input sample file name including the full path\r\n"
    "All of the switches listed above may be used simultaneously and may be followed whith more then one parameter";

constexpr std::string_view helpExample =
    " For example,\r\n"
    "'-if c:/platex/file1.esd  d:/platey/file2.esd  -ip c:/plate1 c:/plate1plate2 -id e:/myRawData'.\r\n"
    "Both old (.esd) and new (.rsd) sample files are accepted.\r\n\r\n";

}  // namespace

void ShowHelp() {
    platform::Print(helpHead);
    platform::Print(helpExample);
    for (const CSwitch& row : AllSwitches())
        platform::Print(row.help);
    platform::Print("press any key");
    platform::WaitForKey();
}
