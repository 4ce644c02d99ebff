// A file that is made under a passing name and gets its own name when it is complete.
#pragma once

#include <string>

#include "platform/Error.h"

namespace platform {

// Whoever looks for a file of that name finds the former one, or the new one whole; also when the program is ended
// half-way.
class PassingFile {
  public:
    PassingFile() = default;
    PassingFile(const PassingFile&) = delete;
    PassingFile& operator=(const PassingFile&) = delete;
    // Removes what has not got its name.
    ~PassingFile();

    // Takes a passing name in the folder of `path` for the file that is to become `path`; nothing is made yet.
    // EISDIR when `path` is a folder, EACCES when the file there may not be written.
    Error Begin(const std::string& path);
    // The passing name; empty before Begin and after the end.
    const std::string& Name() const { return passing; }
    // Gives the closed file its name, in place of a file of that name. After a failure it is removed,
    // and the file of that name is as it was.
    Error Finish();
    // Removes it.
    void Discard();

  private:
    std::string target, passing;
};

}  // namespace platform
