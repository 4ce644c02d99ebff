// SPDX-License-Identifier: MIT
// A file that appears whole under its name or not at all.
//
// It is written under a temporary name in the same folder, ".lw" MACHINE "-" PROCESS "-" NUMBER ".tmp", and renamed
// when it is complete. Whoever opens the name finds the former file or the new one, even if the program is killed
// meanwhile. The process that writes a temporary file keeps it locked (flock). The first AtomicFile of a process in a
// folder removes those that were left there: files without a lock whose process on this machine has ended, and files of
// other machines, whose processes cannot be looked up from here, that are a day old.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"
#include "platform/Error.h"
#include "platform/NameToRemove.h"

struct stat;

namespace platform {

// The beginning of all temporary names that a process of this number makes on this machine.
std::string TemporaryBeginning(int process);

class AtomicFile {
  public:
    AtomicFile() = default;
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile() { Discard(); }

    // Makes an empty file under a temporary name in the folder of `path`; a file at `path` stays for now. EISDIR if
    // there is a folder at `path`, EACCES if the file there or the folder may not be written. A symbolic link at `path`
    // will be replaced; it is never followed. EBUSY if this object has a file open already.
    Error Open(const std::string& path);
    bool IsOpen() const { return file.IsOpen(); }
    // The temporary name in the host's form, for callers that fill the file by its name. Empty if no file is open.
    const std::string& TemporaryName() const { return temporary; }
    // Appends to the file. The first error, including that of Open, is kept and returned by the commit.
    void Write(std::span<const std::byte> data);
    void Write(std::string_view text);
    // Writes a whole file in parts, one after the other. Must be the only Write.
    void Write(std::span<const std::string_view> parts);

    // Closes the file and renames it, replacing a file of that name. Returns the first error since Open; after an error
    // what was at that name is unchanged and the new file is removed.
    Error Commit();
    // The same, but nothing is replaced: EEXIST if the name is in use, also if it is only since Open.
    Error CommitNew();
    // The same, but the new file is first brought to the disk, then the two files exchange their names, and the former
    // file is renamed to `former`, replacing a file of that name. The new file takes over permissions and owner, and is
    // locked until all this is done. Also an error if there is no regular file to exchange with (EINVAL), or if the
    // volume cannot exchange names. `status` receives the result of fstat for the new file.
    Error CommitKeeping(const std::string& former, struct stat& status);
    // Removes the temporary file; nothing happens if there is none.
    void Discard();

  private:
    Error Create(const std::string& path);
    Error Finish(Error (*rename)(const std::string& from, const std::string& to));
    Error ExchangeNames(const std::string& former);

    std::string target, temporary;  // in the host's form
    NameToRemove known;             // `temporary`, as long as there is a file of that name
    host::Descriptor file;
    Error failure;
};

}  // namespace platform
