// The listing of one folder.
#pragma once

#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "platform/Error.h"

// A folder whose listing is not complete.
struct UnlistedFolder {
    std::string folder;
    platform::Error error;
};

class CFolderScan {
  public:
    std::string folder;                      // the folder last scanned
    std::vector<CFileTypeFilter> fileTypes;  // the types looked for
    std::vector<std::string> files;          // paths of the files found, type after type
    std::vector<std::string> subfolders;     // paths of the folders found, without repeats
    std::vector<UnlistedFolder> unlisted;    // folders whose contents are missing there, in part or at all

    CFolderScan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly);
    // Looks into nothing: for those who know the file that they want.
    explicit CFolderScan(const std::string& path);

    // Looks into `path`; with a "*" in it, into the whole tree below what matches, level by level. `foldersOnly` leaves
    // the files out, but not in a tree. Folders that cannot be read give nothing. In a tree each folder is entered once
    // (device and inode); a second path to it is listed and not entered.
    void Scan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly);

  private:
    void LookInto(const std::string& path, bool withFiles);
    // ListFolder of a pattern in the folder `path`.
    void List(const std::string& path, const std::string& pattern, std::vector<std::string>& out, bool foldersOnly);
};
