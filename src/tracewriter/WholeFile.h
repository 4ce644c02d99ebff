// A file that appears whole under its name or not at all.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "platform/Files.h"

class CWholeFile {
  public:
    CWholeFile() = default;
    CWholeFile(const CWholeFile&) = delete;
    CWholeFile& operator=(const CWholeFile&) = delete;
    // Removes what was not committed.
    ~CWholeFile();

    // Makes a file of a passing name in the folder of `path`; what stands under `path` stays for now. 0 or an errno
    // value: EISDIR when `path` is a folder, EACCES when the file there or the folder may not be written.
    int Open(const std::string& path);
    bool IsOpen() const { return file.IsOpen(); }
    // Writes `data` and gives the file its name, in place of a file of that name. After a failure (an errno value)
    // the passing file is gone and the file of that name is as it was.
    int Commit(std::span<const std::byte> data);

  private:
    std::string target;
    std::string passing;  // empty once it is renamed or removed
    platform::File file;

    void Discard();
};
