// SPDX-License-Identifier: MIT
// The base-caller libraries of a run, as the program would find them.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/run/SwitchWords.h"

namespace lanetools {

// What is known of a library after it was loaded in a separate process.
struct CLibrary {
    std::string file;      // as in the settings
    std::string suffix;    // of its output folders, such as "_LC1_QX1"
    std::string missing;   // the first entry point that it lacks; empty if it has all that a base call needs
    std::string accident;  // such as "crashes (SIGSEGV)"; empty if it was loaded and released
    bool isLoaded = false;
};

struct CLibraries {
    std::string settings;         // path of basecall.ini; empty if none was found
    std::string listError;        // what is wrong with its list of libraries; empty if nothing is
    std::vector<CLibrary> known;  // those that the program loads at its start
    // One for each pass over a plate.
    struct Chosen {
        std::string name;                  // as it was given: a file, or the display name of the default one
        std::optional<std::size_t> index;  // in `known`
        bool isDefault = false;
    };
    std::vector<Chosen> chosen;

    // The parameters of -BC for these of the chosen ones: files, or none for the default one.
    std::vector<std::string> Names(const std::vector<std::size_t>& ofChosen) const;
    // The file of a chosen one, or its name as it was given if it is not known.
    const std::string& File(std::size_t ofChosen) const;
};

// Finds the libraries of a run with `switches` and loads each for a test. One that takes longer than `limit` to load
// and release counts as one that hangs. Throws CInterrupted.
CLibraries FindLibraries(const CSwitchWords& switches, std::chrono::seconds limit);

}  // namespace lanetools
