// One base-caller library.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Library.h"

class CBaseCaller {
  public:
    platform::Library module;  // open while the library is loaded
    std::string fileName;      // as the settings or the command line give it
    std::string folder;        // folder of the settings file, where the libraries lie
    std::string name;          // display name; may be empty
    std::int32_t id = 0;       // tells two entries of the list apart
    std::string folderSuffix;  // "_", the library's code, "_QX1"; empty until the library has been loaded once

    // Loads the library with its folder as the working folder and learns folderSuffix. 1, or 0 when it does not load.
    std::int32_t Load();
    // Has the library clean up, if it is loaded and can, and lets go of it.
    void Unload();
    // Needs a loaded library.
    void ReadFolderSuffix();
};
