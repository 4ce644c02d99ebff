// SPDX-License-Identifier: MIT
// The inputs that a run has processed so far, to warn of repeats and of plates that share an output folder.
#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/Files.h"

class CPlate;

// Plates with the same name share an output folder, wherever they are.
class CInputNames {
  public:
    // Warns of a plate that cannot be listed, has no samples or no name, has the name of an earlier plate in another
    // folder, or is given twice.
    void AddPlate(const CPlate& plate);
    // Warns of a single file that does not exist or is given twice, and of its plate as above.
    void AddFile(const std::string& path, const CPlate& plate);

  private:
    // `isWhole`: the plate was given as a folder, not as the folder of a single file.
    void AddFolder(const CPlate& plate, bool isWhole);

    // For each plate name its folders, each with whether it was given as a whole plate.
    std::map<std::string, std::map<platform::FileIdentity, bool>> folders;
    std::set<std::string> files;
};
