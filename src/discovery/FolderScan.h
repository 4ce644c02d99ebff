// The listing of one folder.
#pragma once

#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"

class CFolderScan {
  public:
    std::string folder;                      // the folder last scanned
    std::vector<CFileTypeFilter> fileTypes;  // the types looked for
    std::vector<std::string> files;          // paths of the files found, type after type
    std::vector<std::string> subfolders;     // paths of the folders found, without repeats

    CFolderScan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly);

    // Looks into `path`; with a "*" in it, into the whole tree below what matches, level by level. `foldersOnly` leaves
    // the files out, but not in a tree. Folders that cannot be read give nothing; a link back to a folder above is
    // listed and not entered.
    void Scan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly);

  private:
    void LookInto(const std::string& path, bool withFiles);
};
