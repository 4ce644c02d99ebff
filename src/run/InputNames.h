// Which inputs a run has had, to warn of those that get into each other's way.
#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/Files.h"

class CPlate;

// Plates of one name share their output folder, wherever they lie.
class CInputNames {
  public:
    // Warns of what is odd about a plate of the run: no samples, no name, one that another folder had before, or a
    // plate that is given twice.
    void AddPlate(const CPlate& plate);
    // The same for a single file and the plate that its folder is.
    void AddFile(const std::string& path, const CPlate& plate);

  private:
    void AddFolder(const CPlate& plate, bool isWhole);

    // The folders of each name; true for one that was given as a whole.
    std::map<std::string, std::map<platform::FileIdentity, bool>> folders;
    std::set<std::string> files;
};
