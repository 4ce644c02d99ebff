// SPDX-License-Identifier: MIT
// CRunDriver: from the words of the command line to the settings and the operations of the run.
#include "platform/Console.h"
#include "records/Messages.h"
#include "run/CommandLine.h"
#include "run/RunDriver.h"
#include "run/Switches.h"

namespace {

// A word that is not a switch is no error, but may be a misspelt one.
void WarnOfMisplacedWords(const CCommandLine& line) {
    for (const std::string& word : line.dropped)
        platform::Warn({word, " comes before the first switch and is ignored"});
    for (const CParsedSwitch& given : line.switches)
        for (const std::string& word : given.parameters)
            if (word.starts_with('-'))
                platform::Warn({word, " is not a known switch and is taken as a parameter of ", given.name});
}

}  // namespace

std::int32_t CRunDriver::ProcessCommandLine(int argc, const char* const* argv,
                                            const std::vector<std::string>& switchNames,
                                            const std::vector<CFileTypeFilter>& types) {
    const CCommandLine line(argc, argv, switchNames, types);
    WarnOfMisplacedWords(line);
    inputPlates = line.plates;
    inputFiles = line.files;
    fileTypes = types;
    inputSamples = CInputSamples(inputPlates, inputFiles, fileTypes);
    // Comes first, because it decides how everything else is reported.
    for (const CParsedSwitch& given : line.switches)
        if (IsSwitch(given.name, Switch::Unattended)) unattended = 1;

    if (LocateSettings() == 0) return 0;
    baseCallers = std::make_unique<CBaseCallerSet>(this);
    RunRequest request;
    for (const CParsedSwitch& given : line.switches)
        ApplySwitch(given, *this, request);
    if (request.needDefaultOutput) request.result = SetDefaultOutputFolder();
    if (request.result == 0) return 0;
    if (unattended != 0 && request.callerNames.empty()) {
        Report(FormatMessage(MessageId::LibraryNeeded));
        return 0;
    }
    return Run(request.callerNames);
}
