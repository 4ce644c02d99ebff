// A file that is whole at every moment, with its former state beside it under its name and ".temp".
//
// A new state is written into another file and the two exchange their names, so whoever opens the file finds one state
// or the other. The first state that an object writes goes into a new file. From then on there are two files of which
// the object knows every byte: the next state is written over the one before the former, and only from where they begin
// to differ. If anybody else has touched one of them meanwhile it is a new file again.
//
// Where names cannot be exchanged, or the folder may not be written to while the file may, the file is rewritten in
// place.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/Descriptor.h"
#include "platform/Files.h"

namespace platform {

// What shows that a file has been changed.
struct FileState {
    FileIdentity identity{};
    std::int64_t size = -1, seconds = 0, nanoseconds = 0;  // the time of the last change
    std::uint64_t mode = 0, owner = 0, group = 0, names = 0;
    bool operator==(const FileState&) const = default;
};

class ExchangedFile {
  public:
    // Begins this process's turn at the file at `path`, which is made when it is not there: the folder's own descriptor
    // is locked, and while another process of ours has the turn, or a program holds the file, this waits, 5 s at most
    // (EBUSY, or what opening it gives). A symbolic link is followed, and all happens where it leads. ENXIO for what is
    // no regular file, EACCES for a file that may not be read and written.
    Error Begin(const std::string& path);
    // Ends the turn. Nothing stays open.
    void End();

    // --- During a turn ---

    // True when the file is still as the last Replace of this object left it.
    bool IsAsWritten() const { return file.size >= 0 && file == now; }
    // Where the file lies and its former state goes, in the host's form.
    const std::string& Path() const { return hostPath; }
    std::string FormerPath() const { return hostPath + ".temp"; }
    // All bytes of the file; EFBIG beyond `limit`.
    Error Read(std::string& text, std::size_t limit);
    // Makes `parts`, one after the other, the new state. It does not differ from the last one written in the first
    // `same` bytes (0 when that is not known). After an error the file is as it was.
    Error Replace(std::span<const std::string_view> parts, std::uint64_t same);

  private:
    Error Find(std::string path);
    Error OpenFolder(const std::string& path);
    Error OpenFile(int flags);
    Error WriteAnew(std::span<const std::string_view> parts);
    Error WriteOver(std::span<const std::string_view> parts, std::uint64_t same, std::uint64_t total);
    Error WriteInPlace(std::span<const std::string_view> parts, std::uint64_t total);
    Error KeepFormer(std::string_view text);
    FileState StateOf(const std::string& name) const;

    host::Descriptor folder;  // locked
    host::Descriptor open;    // the file, when it has not been known
    std::string hostPath, leaf, formerLeaf;
    FileState now;                   // the file in this turn
    FileState file, former;          // as they were left; a size of -1 when not known
    std::uint64_t sameAsFormer = 0;  // bytes at the head that are the same in both
    bool canExchange = true;
};

}  // namespace platform
