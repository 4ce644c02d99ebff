// SPDX-License-Identifier: MIT
// All that is known about a run before it begins. It is found out once; the findings and the run itself only read it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/run/Libraries.h"
#include "lanetools/run/SwitchWords.h"

namespace lanetools {

// The command line of "lanetools run".
struct CRunOptions {
    std::vector<std::string> plates;
    std::string output;
    std::size_t jobs = 1;
    std::int32_t timeout = 0;  // seconds without progress on a sample; 0 for no limit
    double minPass = 100;      // percent of the rows that must be called
    bool isDry = false;
    bool redoDamaged = false;
    std::vector<std::string> words;  // the switches of the program, which follow "--"
};

struct CPlannedPlate {
    std::string given;               // as on the command line
    std::string path;                // full, without links; as given if it does not exist
    std::string name;                // its last component
    std::string problem;             // why it cannot be listed; empty if it can
    std::vector<std::string> files;  // its samples without folder, in the order in which the program takes them
    std::string mistake = {};        // what the folder holds if it is no plate, as a hint; empty if nothing is known
};

// Where the results of one plate and one library go.
struct CPlannedOutput {
    std::size_t plate;    // in CRunPlan::plates
    std::size_t library;  // in CLibraries::chosen
    std::string path;
};

// A stored result that cannot stay.
struct CBadResult {
    std::string path, reason;
};

struct CRunPlan {
    CRunOptions options;
    std::string program;  // path
    CSwitchWords switches;
    std::vector<CPlannedPlate> plates;
    std::string output;                 // full, without links; it need not exist yet
    std::optional<std::uint64_t> room;  // bytes that may still be written there
    CLibraries libraries;
    std::vector<CPlannedOutput> outputs;  // in the order of the plates, without libraries that do not load
    std::vector<CBadResult> damaged;      // stored results of this run's samples that cannot be trusted
    std::vector<CBadResult> foreign;      // those of other samples under the same names
    std::vector<CBadResult> unread = {};  // those that the system does not give, which may be good
};

// Finds it all out and changes nothing. Throws CInterrupted, and CRefused if the program does not exist.
CRunPlan MakeRunPlan(CRunOptions options);

// The first start of the program for a plate.
std::vector<std::string> FirstCommand(const CRunPlan& plan, const CPlannedPlate& plate);
// A further one: over `files` of the plate, or over all of it if that is empty, with `libraries` (empty: the default
// one).
std::vector<std::string> FurtherCommand(const CRunPlan& plan, const CPlannedPlate& plate,
                                        const std::vector<std::string>& files,
                                        const std::vector<std::string>& libraries);

}  // namespace lanetools
