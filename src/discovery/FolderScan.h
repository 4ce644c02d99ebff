// SPDX-License-Identifier: MIT
// The files and subfolders of one folder, or of a tree of folders.
#pragma once

#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "platform/Error.h"

// A folder that could not be listed completely.
struct UnlistedFolder {
    std::string folder;
    platform::Error error;
};

class CFolderScan {
  public:
    std::string folder;                      // the folder last scanned
    std::vector<CFileTypeFilter> fileTypes;  // the types of file to look for
    std::vector<std::string> files;          // paths of the files found, in the order of fileTypes
    std::vector<std::string> subfolders;     // paths of the folders found, each once
    std::vector<UnlistedFolder> unlisted;    // folders whose contents are missing above, partly or completely

    // Scans at once; see Scan.
    CFolderScan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly);
    // Only sets `folder`: for a caller that already knows its file.
    explicit CFolderScan(const std::string& path);

    // Lists the folder `path` or, if it contains a "*", the whole tree below each match, level by level. `foldersOnly`
    // skips the files of a single folder, but not those of a tree. A folder that cannot be listed is added to
    // `unlisted`. In a tree each folder (by device and inode) is entered once; a second path to it is listed but not
    // entered.
    void Scan(const std::string& path, const std::vector<CFileTypeFilter>& types, bool foldersOnly);

  private:
    void ListContents(const std::string& path, bool withFiles);
    // Adds the matches of `pattern`, which is in the folder `path`, to `out`; notes an error in `unlisted`.
    void List(const std::string& path, const std::string& pattern, std::vector<std::string>& out, bool foldersOnly);
};
