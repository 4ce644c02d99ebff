// SPDX-License-Identifier: MIT
// Shared libraries that are loaded at run time.
#pragma once

#include <string>

namespace platform {

// A loaded library. Movable; releases the library on destruction.
class Library {
  public:
    Library() = default;
    Library(Library&& other) noexcept;
    Library& operator=(Library&& other) noexcept;
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();

    // Loads the library at the program path `path`: nothing is appended to the path, and no other folder is searched.
    // Its symbols are all bound at once and do not become global. False if it does not load. Its code stays in memory
    // until the process ends, since threads of its own may still be running in it; where that cannot be arranged for
    // lack of memory, the library is never released.
    bool Open(const std::string& path);
    bool IsOpen() const { return handle != nullptr; }
    // The file name without its folder; empty before the first Open.
    const std::string& Name() const { return name; }
    // Address of an exported symbol; null if there is none or no library is open.
    void* Symbol(const char* symbol) const;
    // Releases the library. True if there was one and that succeeded.
    bool Close();

  private:
    void* handle = nullptr;
    bool staysInMemory = false;
    std::string name;
};

}  // namespace platform
