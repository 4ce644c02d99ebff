// Shared libraries that are loaded at run time.
#pragma once

#include <string>

namespace platform {

// A loaded library; movable, lets go of it on destruction.
class Library {
  public:
    Library() = default;
    Library(Library&& other) noexcept;
    Library& operator=(Library&& other) noexcept;
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();

    // Loads the file at the program path `path` (all its symbols are bound at once, none become global). The path is
    // used as it is: nothing is appended and no other folder is searched. False when it does not load. Its code stays
    // in memory until the process ends, since threads of its own may still run in it.
    bool Open(const std::string& path);
    bool IsOpen() const { return handle != nullptr; }
    // The file's name without its folder; empty until a library has been opened.
    const std::string& Name() const { return name; }
    // Address of an exported name, null when there is none or no library is open.
    void* Symbol(const char* symbol) const;
    // True when the library was let go of.
    bool Close();

  private:
    void* handle = nullptr;
    std::string name;
};

}  // namespace platform
