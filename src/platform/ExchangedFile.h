// SPDX-License-Identifier: MIT
// A file that is complete at every moment, and whose former state is kept in the same folder under its name with
// ".temp" added.
//
// A new state is written to a second file, and then the two files exchange their names, so readers see either the old
// state or the new one. The first state that an object writes goes into a new file. After that the object knows the
// contents of both files, so it writes the next state over the ".temp" file, starting at the first byte that differs.
// If somebody else has changed one of the files meanwhile, it writes a new file again.
//
// If the volume cannot exchange names, or the file is writable but its folder is not, the file is rewritten in place.
//
// Processes take turns by locking the file itself, since a lock on its folder does not hold between machines. A process
// may wait for the lock of a file that loses its name meanwhile, so it looks the name up again once it has the lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"
#include "platform/Error.h"
#include "platform/Files.h"

namespace platform {

// Attributes of a file that show whether it has been changed.
struct FileState {
    FileIdentity identity{};
    std::int64_t size = -1, seconds = 0, nanoseconds = 0;  // the time of the last change
    std::uint64_t mode = 0, owner = 0, group = 0, names = 0;
    bool operator==(const FileState&) const = default;
};

class ExchangedFile {
  public:
    // Begins this process's turn at the file at `path`, which is created if it does not exist, by locking it. Waits up
    // to 5 s while another process has the turn (EBUSY) or holds the file (the error of opening it). A symbolic link is
    // followed. EISDIR or ENXIO if it is not a regular file, EACCES if it may not be read and written.
    Error Begin(const std::string& path);
    // Ends the turn and closes everything.
    void End();

    // --- During a turn ---

    // True if the file is still as this object's last Replace left it.
    bool IsAsWritten() const { return file.size >= 0 && file == now; }
    // Host paths of the file, with links followed, and of its former state.
    const std::string& Path() const { return hostPath; }
    std::string FormerPath() const { return hostPath + ".temp"; }
    // Reads the whole file; EFBIG if it has more than `limit` bytes. Of a file that has no contents, as after a power
    // cut, but was there before this turn, reads the former state, if there is one.
    Error Read(std::string& text, std::size_t limit);
    // Makes the concatenation of `parts` the new state of the file. `same` is a number of bytes at the start that are
    // known to be the same as in the last state written (0 if unknown). After an error the file is as it was.
    Error Replace(std::span<const std::string_view> parts, std::uint64_t same);

  private:
    Error FindAndOpen(std::string path);
    Error OpenFile();
    Error LockFile(int& waited);
    Error OpenFolder();
    Error ReadFormer(std::string& text, std::size_t limit) const;
    Error WriteNewFile(std::span<const std::string_view> parts);
    Error OverwriteFormer(std::span<const std::string_view> parts, std::uint64_t same, std::uint64_t total);
    Error WriteInPlace(std::span<const std::string_view> parts, std::uint64_t total);
    Error KeepFormer(std::string_view text);
    FileState StateOf(const std::string& name) const;

    host::Descriptor open;    // the file, locked
    host::Descriptor folder;  // opened after the file was locked
    std::string hostPath, leaf, formerLeaf;
    bool isNew = false;              // this turn has created the file
    FileState now;                   // the file at the start of this turn
    FileState file, former;          // as the last Replace left them; a size of -1 if unknown
    std::uint64_t sameAsFormer = 0;  // bytes at the start that are the same in both
    bool canExchange = true;
};

}  // namespace platform
