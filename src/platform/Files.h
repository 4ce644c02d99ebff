// Files and folders of the host system.
//
// Everything here takes paths as the program writes them: 8-bit text, "\" and "/" both separate, and "X:" at the
// head names a drive (Drives.h). Results are 0 for success or an errno value; a path on a drive that is not mapped
// gives ENOENT from every operation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

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
    File() = default;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File();

    // Opens `path`; the file must not be open already (EBUSY). A folder gives EISDIR in every mode.
    int Open(const std::string& path, OpenMode mode);
    bool IsOpen() const { return fd >= 0; }

    // Reads up to out.size() bytes at the current position; `got` is what came before the end of the file.
    int Read(std::span<std::byte> out, std::size_t& got);
    // Writes all of `data` at the current position.
    int Write(std::span<const std::byte> data);
    int Write(std::string_view text);
    // Moves to `offset` bytes from the start (SeekSet) or from the end (SeekFromEnd, offset 0 or below). A position
    // before the start gives EINVAL and leaves the position as it was.
    int SeekSet(std::int64_t offset);
    int SeekFromEnd(std::int64_t offset);
    int Tell(std::int64_t& position) const;
    int Length(std::int64_t& length) const;
    // Cuts the file (or extends it with zeros) to `length` bytes.
    int Truncate(std::int64_t length);
    // Waits until the file's data is on the disk.
    int Flush();
    // Closes the file; 0 also when it was not open. It counts as closed afterwards, whatever the result.
    int Close();

  private:
    int fd = -1;
};

// Whole files. ReadFile fails with EFBIG beyond `limit` bytes.
int ReadFile(const std::string& path, std::string& text, std::size_t limit = std::size_t{1} << 30);

// Makes one folder level. EEXIST when there is something of that name.
int MakeDirectory(const std::string& path);
// Copies a file byte for byte, replacing `to`. EEXIST when both are the same file (device and inode): nothing is
// changed then. `to` gets the permission bits of `from`. What was written is removed when the copy fails half-way.
int CopyFile(const std::string& from, const std::string& to);
int DeleteFile(const std::string& path);
// Renames within one folder tree, replacing `to` in one step.
int RenameFile(const std::string& from, const std::string& to);
// Gives the owner the rights to read and write (a file's "normal" attributes).
int SetNormalAttributes(const std::string& path);
// True when both paths name one existing file (device and inode, whatever the spelling).
bool IsSameFile(const std::string& a, const std::string& b);
// Bytes that this user may still write on the volume of `path` (of the current folder when empty).
std::optional<std::uint64_t> FreeBytes(const std::string& path);

struct FoundEntry {
    std::string name;  // last component as it is on disk
    bool isDirectory = false;
};

// All entries that match `pattern`: wildcards "*" and "?" in the last component, "*.*" matches every name, ASCII letter
// case is ignored in a wildcard search only. Ascending by name, case ignored, ties by byte value; "." and ".." are left
// out, links to nothing are not. Without a wildcard, the entry of that name if it leads to anything. Folders without
// rights give nothing.
std::vector<FoundEntry> FindFiles(const std::string& pattern);

// The working folder as a full path, and moving it. CurrentFolder gives nothing when it cannot be told.
std::optional<std::string> CurrentFolder();
int SetCurrentFolder(const std::string& path);

// Full path of the running program; nothing when it cannot be told.
std::optional<std::string> ProgramPath();
// `name` in the folder of the running program; plain `name` when that folder cannot be told.
std::string BesideProgram(const std::string& name);

// What the system says for an errno value ("Success" for 0).
std::string ErrorText(int error);

}  // namespace platform
