// Files and folders of the host system.
//
// Everything here takes paths as the program writes them: 8-bit text, "\" and "/" both separate, and "X:" at the
// head names a drive (Drives.h). A path on a drive that is not mapped gives ENOENT from every operation.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Descriptor.h"

namespace platform {

enum class OpenMode {
    Read,           // must exist
    Update,         // read and write, must exist
    CreateOrEmpty,  // read and write, made when missing, emptied when there
    CreateOrKeep,   // read and write, made when missing, contents kept
};

// An open file. Movable, closes itself on destruction. Reads and writes are unbuffered.
class File {
  public:
    // Opens `path`; the file must not be open already (EBUSY). A folder gives EISDIR; for reading only, whatever is no
    // regular file gives ENXIO.
    Error Open(const std::string& path, OpenMode mode);
    bool IsOpen() const { return descriptor.IsOpen(); }

    // Reads up to out.size() bytes at the current position; `got` is what came before the end of the file.
    Error Read(std::span<std::byte> out, std::size_t& got) { return descriptor.Read(out, got); }
    // Writes all of `data` at the current position.
    Error Write(std::span<const std::byte> data) { return descriptor.Write(data); }
    Error Write(std::string_view text);
    // Moves to `offset` bytes from the start (SeekSet) or from the end (SeekFromEnd, offset 0 or below). A position
    // before the start gives EINVAL and leaves the position as it was.
    Error SeekSet(std::int64_t offset);
    Error SeekFromEnd(std::int64_t offset);
    Error Tell(std::int64_t& position) const;
    Error Length(std::int64_t& length) const;
    // Cuts the file (or extends it with zeros) to `length` bytes.
    Error Truncate(std::int64_t length);
    // Waits until the file's data is on the disk.
    Error Flush();
    // Closes the file; no error also when it was not open. It counts as closed afterwards, whatever the result.
    Error Close() { return descriptor.Close(); }
    // For clean-up and after reading, when nothing depends on the result.
    void CloseQuietly() noexcept { descriptor.CloseQuietly(); }

  private:
    host::Descriptor descriptor;
};

// The most that is read of a file of settings.
inline constexpr std::size_t longestSettings = std::size_t{1} << 20;
// Gives the bytes of a file, the first `limit` of them when it has more. `text` changes only when it succeeds.
Error ReadFile(const std::string& path, std::string& text, std::size_t limit = longestSettings);

// Makes one folder level. EEXIST when there is something of that name.
Error MakeDirectory(const std::string& path);
// Copies a regular file (ENXIO) byte for byte, replacing `to`. EEXIST when both are the same file (device and inode):
// nothing is changed then. `to` gets the permission bits of `from`. What was written is removed when the copy fails
// half-way.
Error CopyFile(const std::string& from, const std::string& to);
Error DeleteFile(const std::string& path);
// The same when nothing depends on whether there was such a file.
void DeleteIfThere(const std::string& path);
// Renames within one folder tree, replacing `to` in one step.
Error RenameFile(const std::string& from, const std::string& to);
// Gives the owner the rights to read and write (a file's "normal" attributes).
Error SetNormalAttributes(const std::string& path);
// What tells a file or folder from all others, whatever name or link leads to it.
struct FileIdentity {
    std::uint64_t device, inode;
    auto operator<=>(const FileIdentity&) const = default;
};
// Nothing for a path that leads to nothing, or that cannot be looked at.
std::optional<FileIdentity> IdentityOf(const std::string& path);
// True when both paths name one existing file.
bool IsSameFile(const std::string& a, const std::string& b);
// The identity of what stands at `path` itself: of a symbolic link, not of what it leads to.
std::optional<FileIdentity> IdentityOfName(const std::string& path);
// Where a symbolic link at `path` leads in the end, as the host's full path. Nothing for what is no link, or when it
// leads to nothing.
std::optional<std::string> LinkTarget(const std::string& path);
// Bytes that this user may still write on the volume of `path` (of the current folder when empty).
std::optional<std::uint64_t> FreeBytes(const std::string& path);

// Waits until all that has been written on the volume of `path` is on the disk.
Error SyncVolume(const std::string& path);

struct FoundEntry {
    std::string name;  // last component as it is on disk
    bool isDirectory = false;
};

// Gives all entries that match `pattern`: wildcards "*" and "?" in the last component, "*.*" matches every name, ASCII
// letter case is ignored in a wildcard search only. Ascending by name, case ignored, ties by byte value; "." and ".."
// are left out, links to nothing are not. Without a wildcard, the entry of that name if it leads to anything. With an
// error (of a folder that is not there or cannot be listed) `entries` are those found so far.
Error FindFiles(const std::string& pattern, std::vector<FoundEntry>& entries);

// The working folder as a full path, and moving it. CurrentFolder gives nothing when it cannot be told.
std::optional<std::string> CurrentFolder();
Error SetCurrentFolder(const std::string& path);

// Full path of the running program; nothing when it cannot be told.
std::optional<std::string> ProgramPath();
// Its folder, with the separator at its end.
std::optional<std::string> ProgramFolder();
// `name` in the folder of the running program; plain `name`, with a warning, when that folder cannot be told.
std::string BesideProgram(const std::string& name);

}  // namespace platform
