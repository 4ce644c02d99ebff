// The sample files that a run must not change, whatever name leads to them.
#pragma once

#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "platform/Files.h"

class CInputSamples {
  public:
    CInputSamples() = default;
    // Looks up the samples of a run's input, which is best done before the run writes anything: in each folder of
    // `plates` the files of these types, and of the single `files` those that are named ".rsd" or ".esd" or have a
    // sample's trailer. What cannot be looked at is left out.
    CInputSamples(const std::vector<std::string>& plates, const std::vector<std::string>& files,
                  const std::vector<CFileTypeFilter>& types);

    // True for a sample of the input, or for a link by which the input names one.
    bool Has(const platform::FileIdentity& file) const;
    // True when writing to `path`, as opening it and adding to it does, would change a sample: one of the input or, if
    // `path` is a symbolic link, any file that is named like a sample or has a sample's trailer.
    bool ForbidWriting(const std::string& path) const;
    // True when giving `path` to another file, or deleting it, would take a sample of the input away. A symbolic link
    // may be replaced, as long as the input does not name a sample by it.
    bool ForbidReplacing(const std::string& path) const;

  private:
    void Add(const std::string& path);

    std::vector<platform::FileIdentity> known;  // ascending
};
