// A file that appears whole under its name or not at all.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "platform/Files.h"
#include "platform/PassingFile.h"

class CWholeFile {
  public:
    // Makes a file of a passing name in the folder of `path`; what stands under `path` stays for now.
    // EISDIR when `path` is a folder, EACCES when the file there or the folder may not be written.
    platform::Error Open(const std::string& path);
    bool IsOpen() const { return file.IsOpen(); }
    // Writes `data` and gives the file its name, in place of a file of that name. After a failure
    // the passing file is gone and the file of that name is as it was. So it is without a Commit.
    platform::Error Commit(std::span<const std::byte> data);

  private:
    platform::PassingFile passing;
    platform::File file;
};
