// SPDX-License-Identifier: MIT
// One base-caller library.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Library.h"

class CBaseCaller {
  public:
    platform::Library module;  // open while the library is loaded
    std::string fileName;      // as given in the settings or on the command line
    std::string folder;        // of the library, which is also that of the settings file
    std::string name;          // display name; may be empty
    std::int32_t id = 0;       // distinguishes the entries of the list
    std::string folderSuffix;  // "_", the library's code, "_QX1"; empty until the library has been loaded once

    // Loads the library, with its folder as the working folder meanwhile, and sets folderSuffix. 1, or 0 if it does not
    // load; a library that was loaded before then stays loaded.
    std::int32_t Load();
    // Calls the library's CleanUp, if it has one, and releases the library. Does nothing if it is not loaded.
    void Unload();
    // Sets folderSuffix from the code of the library, which must be loaded.
    void ReadFolderSuffix();
};
