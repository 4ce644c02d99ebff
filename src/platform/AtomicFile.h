// A file that appears whole under its name or not at all.
//
// It is written under a temporary name in the same folder, ".lw" PROCESS "-" NUMBER ".tmp", and renamed when it is
// complete. Whoever looks for a file of that name finds the former one or the new one, also when the program is killed
// half-way. As long as its maker lives, the file is locked (flock); a file without a lock was left by a process that is
// gone, and the first AtomicFile of a process in a folder removes those.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"
#include "platform/Error.h"

namespace platform {

class AtomicFile {
  public:
    AtomicFile() = default;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile() { Discard(); }

    // Makes an empty file under a temporary name in the folder of `path`; what stands under `path` stays for now.
    // EISDIR when that is a folder, EACCES when the file there or the folder may not be written. A symbolic link there
    // is going to be replaced and is never followed. EBUSY when a file is open already.
    Error Open(const std::string& path);
    bool IsOpen() const { return file.IsOpen(); }
    // The temporary name, for those who fill the file by its name. Empty when no file is open.
    const std::string& TemporaryName() const { return temporary; }
    // Appends to the file. The first error, of Open too, is kept for the end.
    void Write(std::span<const std::byte> data);
    void Write(std::string_view text);
    // The same for the parts of a whole file, one after the other; nothing may be written besides.
    void Write(std::span<const std::string_view> parts);

    // Closes the file and gives it its name, instead of a file of that name. After an error (the first of all, from
    // Open on) what stands under that name is as it was and the new file is gone.
    Error Commit();
    // The same, but the two files exchange their names, and the former one gets the name `former`, instead of a file
    // of that name. The new file takes over the permissions and the owner. An error also when there is no regular file
    // to exchange with, or when the volume cannot exchange names.
    Error CommitKeeping(const std::string& former);
    // Removes the file.
    void Discard();

  private:
    Error Create(const std::string& path);
    // Closes the file and has `giveName` name it; removes it after an error.
    template <class GiveName>
    Error Finish(GiveName giveName);

    std::string target, temporary;  // in the host's form
    host::Descriptor file;
    Error failure;
};

}  // namespace platform
