// The switches of the command line: all that the program knows of one stands in its row of one table, in Switches.cpp.
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

// What the switches ask of the run itself; the rest goes into the base caller set.
struct RunRequest {
    std::vector<std::string> callerNames;
    bool callerSwitchAdded = false;
    bool needDefaultOutput = true;
    std::int32_t result = 0;  // of the latest choice of an output folder
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
    bool needsBaseCall;     // the first such switch makes the base call an operation
    // Its line of the help; none for the switches that name input, which the head of the help explains.
    std::string_view help;
    // What it sets or asks for, when the command line is applied. Null for nothing.
    void (*apply)(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request);
    // Its operation on every sample. The result, or nothing when that does not count. Null for none.
    std::optional<std::int32_t> (*step)(const SampleStep& step);
};

// In the order of `Switch`.
std::span<const CSwitch> AllSwitches();
// The switch of that name; null when there is none.
const CSwitch* FindSwitch(std::string_view name);
// True when `name` is the name of `id`.
bool IsSwitch(std::string_view name, Switch id);
// The names of the three switches that name input, and of the others.
std::vector<std::string> InputSwitchNames();
std::vector<std::string> SwitchNames();

// Applies a switch to a run whose base caller set is there.
void ApplySwitch(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request);

// The whole help on standard output, and then a wait for a key.
void ShowHelp();
