// SPDX-License-Identifier: MIT
// The sample files that a run must not change, under whatever name or link they are reached.
#pragma once

#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "platform/Files.h"

class CInputSamples {
  public:
    CInputSamples() = default;
    // Looks up the samples of a run's input; call it before the run writes anything. Samples are the files of these
    // types in each folder of `plates`, and those of the single `files` that are named ".rsd" or ".esd" or have a
    // trailer that only samples have. Files that cannot be examined are skipped.
    CInputSamples(const std::vector<std::string>& plates, const std::vector<std::string>& files,
                  const std::vector<CFileTypeFilter>& types);

    // True for a sample of the input, or for a link through which the input names one.
    bool Has(const platform::FileIdentity& file) const;
    // True when opening `path` and writing to it would change a sample: one of the input or, if `path` is a symbolic
    // link, any file that is named like a sample or has a trailer that only samples have. Also true when it would make
    // a file through a link, and one of the names on the way is that of a sample.
    bool IsWriteForbidden(const std::string& path) const;
    // True when replacing or deleting `path` would remove a sample of the input. A symbolic link may be replaced unless
    // the input names a sample through it.
    bool IsReplaceForbidden(const std::string& path) const;

  private:
    void Add(const std::string& path);

    std::vector<platform::FileIdentity> known;  // sorted
};
