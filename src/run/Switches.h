// SPDX-License-Identifier: MIT
// The switches of the command line. All that the program knows about a switch is in its row of the table in
// Switches.cpp.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class CBaseCallerSet;
class CRunDriver;
class CSampleFile;
class CTraceFile;
struct CParsedSwitch;

enum class Switch {
    InputFolders,
    InputPlates,
    InputFiles,
    OutputFolder,
    BaseCall,
    Abd,
    Unattended,
    Scf,
    BaseOrder,
    Fasta,
    FastaAppended,
    RawText,
    ProcessedText,
    PlateFasta,
    RunFasta,
    GoodRegion,
    NoExtensions,
    NoEmpty,
    Pile,
    Help
};

// What the switches ask of the run itself. Other settings are made in the base caller set.
struct RunRequest {
    std::vector<std::string> callerNames;
    bool callerSwitchAdded = false;
    bool needDefaultOutput = true;
    std::int32_t result = 0;  // of the last attempt to set the output folder
};

// One operation on one sample.
struct SampleStep {
    const CBaseCallerSet& set;
    CSampleFile& sample;
    CTraceFile* called;  // the processed trace; null when the base call failed
};

struct CSwitch {
    Switch id;
    std::string_view name;  // in upper case
    bool needsBaseCall;     // the first such switch adds the base call to the operations
    // Its line of the help. Empty for the switches that name input: the head of the help explains them.
    std::string_view help;
    // Makes its settings when the command line is applied. Null if it has none.
    void (*apply)(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request);
    // Its operation on each sample; gives the result, or nothing if the operation has none. Null if it is not an
    // operation.
    std::optional<std::int32_t> (*step)(const SampleStep& step);
};

// In the order of `Switch`.
std::span<const CSwitch> AllSwitches();
// The switch with that name; null if there is none.
const CSwitch* FindSwitch(std::string_view name);
// True when `name` is the name of `id`.
bool IsSwitch(std::string_view name, Switch id);
// The names of the three switches that name input, and the names of all others.
std::vector<std::string> InputSwitchNames();
std::vector<std::string> SwitchNames();

// Applies a switch. The driver must already have its base caller set.
void ApplySwitch(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request);

// Prints the help on standard output and waits for a key.
void ShowHelp();
