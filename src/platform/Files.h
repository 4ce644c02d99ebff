// SPDX-License-Identifier: MIT
// Files and folders of the host system.
//
// All paths are program paths: 8-bit text in which "\" and "/" are both separators and "X:" at the start names a drive
// (Drives.h). Every operation gives ENOENT for a path on a drive that is not mapped.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Descriptor.h"
#include "platform/Error.h"

namespace platform {

enum class OpenMode {
    Read,           // must exist
    Update,         // read and write, must exist
    CreateOrEmpty,  // read and write; created if missing, else emptied
    CreateOrKeep,   // read and write; created if missing, contents kept
};

// A file. Movable; closes itself on destruction. Reads and writes are unbuffered.
class File {
  public:
    // Opens `path`; EBUSY if a file is open already. For reading only, anything but a regular file gives ENXIO;
    // otherwise a folder gives EISDIR.
    Error Open(const std::string& path, OpenMode mode);
    bool IsOpen() const { return descriptor.IsOpen(); }

    // Reads out.size() bytes at the current position, or fewer at the end of the file; `got` is their number.
    Error Read(std::span<std::byte> out, std::size_t& got) { return descriptor.Read(out, got); }
    // Writes all of `data` at the current position.
    Error Write(std::span<const std::byte> data) { return descriptor.Write(data); }
    Error Write(std::string_view text);
    // Move to `offset` bytes from the start (SeekSet) or from the end (SeekFromEnd; 0 or negative). A position before
    // the start gives EINVAL and changes nothing.
    Error SeekSet(std::int64_t offset);
    Error SeekFromEnd(std::int64_t offset);
    Error Tell(std::int64_t& position) const;
    Error Length(std::int64_t& length) const;
    // Cuts the file, or extends it with zeros, to `length` bytes.
    Error Truncate(std::int64_t length);
    // Waits until the file's data is on the disk.
    Error Flush() { return descriptor.Sync(); }
    // Closes the file, which counts as closed whatever the result. Success if it was not open.
    Error Close() { return descriptor.Close(); }
    // For clean-up and after reading, when nothing depends on the result.
    void CloseQuietly() noexcept { descriptor.CloseQuietly(); }

  private:
    host::Descriptor descriptor;
};

// The limit in bytes for reading a settings file.
inline constexpr std::size_t maxSettingsSize = std::size_t{1} << 20;
// Reads a file into `text`, but no more than `limit` bytes. After an error `text` is unchanged.
Error ReadFile(const std::string& path, std::string& text, std::size_t limit = maxSettingsSize);

// Makes one folder level. EEXIST if the name is in use.
Error MakeDirectory(const std::string& path);
// Copies a regular file (else ENXIO) byte for byte, replacing the contents of `to`, and its permission bits. EEXIST,
// with nothing changed, if both are the same file (device and inode). If the copy fails halfway `to` is removed.
Error CopyFile(const std::string& from, const std::string& to);
Error DeleteFile(const std::string& path);
// The same without a result, for a file that may not exist.
void DeleteIfThere(const std::string& path);
// Renames within one volume, replacing `to` in one atomic step.
Error RenameFile(const std::string& from, const std::string& to);
// Gives the owner the rights to read and write (a file's "normal" attributes).
Error SetNormalAttributes(const std::string& path);
// Identifies a file or folder, under whatever name or link it is reached.
struct FileIdentity {
    std::uint64_t device, inode;
    auto operator<=>(const FileIdentity&) const = default;
};
// Nothing if there is nothing at `path`, or it cannot be examined.
std::optional<FileIdentity> IdentityOf(const std::string& path);
// True if both paths lead to the same existing file.
bool IsSameFile(const std::string& a, const std::string& b);
// The identity of `path` itself: of a symbolic link, not of the file that it leads to.
std::optional<FileIdentity> IdentityOfName(const std::string& path);
// The host paths through which a symbolic link at `path` leads, its own first; the last one is no link, and maybe
// nothing is there. Empty if `path` is not a link or leads in circles.
std::vector<std::string> LinkPaths(const std::string& path);
// Why there is nothing at `path` that can be examined; success if there is something.
Error Examine(const std::string& path);
// True if there is something other than a folder at `path`.
bool IsOtherThanFolder(const std::string& path);
// Bytes that this user may still write to the volume of `path`, or of the working folder if `path` is empty.
std::optional<std::uint64_t> FreeBytes(const std::string& path);

// Waits until everything written to the volume of the folder `path` is on the disk.
Error SyncVolume(const std::string& path);

struct FoundEntry {
    std::string name;  // last component as it is on disk
    bool isDirectory = false;
};

// Finds all entries that match `pattern`, whose last component may have the wildcards "*" and "?"; "*.*" matches every
// name. With a wildcard, ASCII letter case is ignored, and broken links are included. Without one, finds the entry of
// exactly that name if it exists and is not a broken link. Sorted by name, case ignored, then by byte value; "." and
// ".." are excluded. After an error (the folder does not exist or cannot be listed) `entries` has those found so far.
Error FindFiles(const std::string& pattern, std::vector<FoundEntry>& entries);

// Get and change the working folder. CurrentFolder gives its full path, or nothing if it is unknown.
std::optional<std::string> CurrentFolder();
Error SetCurrentFolder(const std::string& path);

// Full path of the running program; nothing if it is unknown.
std::optional<std::string> ProgramPath();
// Its folder, with a separator at the end.
std::optional<std::string> ProgramFolder();
// Path of `name` in the folder of the running program; only `name`, with a warning, if that folder is unknown.
std::string PathNextToProgram(const std::string& name);

}  // namespace platform
