// SPDX-License-Identifier: MIT
// The folder of one plate, and the names of the samples in it.
//
// No sample is ever lost to a name: a folder of another plate and a file of another sample stay as they are, and the
// new one gets the first of the names NAME-2, NAME-3, ... that is free or its own. So the same import finds its own
// files again, and so does another import of the same samples.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace lanetools {

// Where a sample goes.
struct CPlace {
    std::string path;
    bool isPlainTaken = false;  // another sample has the plain name
    bool isOwn = false;         // there is a file, which holds this sample
    std::string source;         // the source that it names, if any

    bool HasOtherSource(const CSampleInfo& info) const { return !source.empty() && source != info.sourceFile; }
};

class CPlateFolder {
  public:
    // For samples of the plate `plateId`, which is not empty, in a folder in `root`. Neither needs to exist.
    // `taken` are the names of folders that this import uses for other plates; the new one is added.
    CPlateFolder(const std::filesystem::path& root, const std::string& plateId, std::set<std::string>& taken);

    const std::string& Path() const { return path; }
    // True if another plate has the plain name.
    bool IsPlainTaken() const { return isPlainTaken; }

    // A sample of this well, as WellName gives it or empty, belongs to the plate too.
    void AddWell(const std::string& well);
    // 24 x 16 if one of the wells, also of existing samples, does not fit in 12 x 8.
    std::int32_t Columns() const { return isLarge ? 24 : 12; }
    std::int32_t Rows() const { return isLarge ? 16 : 8; }

    // The file of a sample with the plain name `head` + `tail`, of which `head` is cut as needed. Other imports may be
    // storing samples meanwhile: if the name has been taken when the file is to be stored there, call it again.
    CPlace Place(const std::string& head, const std::string& tail, const CSampleInfo& info,
                 std::span<const ScanRecord> scans) const;

  private:
    std::string path;
    bool isPlainTaken = false, isLarge = false;
};

}  // namespace lanetools
