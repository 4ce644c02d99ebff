// The base-caller libraries of a run, as the program will find them.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "lanetools/run/SwitchWords.h"

namespace lanetools {

// What a library says of itself when it is loaded, which a process of its own has tried out.
struct CLibrary {
    std::string file;      // as the settings have it
    std::string suffix;    // of its output folders, such as "_LC1_QX1"
    std::string missing;   // the first entry point that it lacks; empty when it has all that base calls need
    std::string accident;  // "it crashes (SIGSEGV)" and the like; empty when it lets itself be loaded and released
    bool isLoaded = false;
};

struct CLibraries {
    std::string settings;         // path of basecall.ini; empty when there is none
    std::string listError;        // what is wrong with its list of libraries; empty for nothing
    std::vector<CLibrary> known;  // those that the program loads at its start
    // One for each pass over a plate.
    struct Chosen {
        std::string name;                  // what it was asked for by: a file, or the display name of the default one
        std::optional<std::size_t> index;  // in `known`
        bool isDefault = false;
    };
    std::vector<Chosen> chosen;

    // What the program is to be asked for to run these of the chosen ones: files, or nothing for the default one.
    std::vector<std::string> Names(const std::vector<std::size_t>& ofChosen) const;
    // The file of a chosen one, or what it was asked for by when it is not known.
    const std::string& File(std::size_t ofChosen) const;
};

// Finds and tries out the libraries of a run with `switches`; one that takes longer than `limit` to be loaded and
// released counts as one that hangs. Throws CInterrupted.
CLibraries FindLibraries(const CSwitchWords& switches, std::chrono::seconds limit);

}  // namespace lanetools
