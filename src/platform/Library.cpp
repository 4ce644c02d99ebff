// SPDX-License-Identifier: MIT
#include "platform/Library.h"

#include <dlfcn.h>

#include <utility>

#include "platform/Drives.h"
#include "platform/Guest.h"

namespace platform {

namespace {

constexpr int bindAll = RTLD_NOW | RTLD_LOCAL;

// Keeps the code of a loaded library in memory after its release. False if that fails.
bool KeepInMemory(const std::string& path) {
    void* const again = ::dlopen(path.c_str(), bindAll | RTLD_NOLOAD | RTLD_NODELETE);
    if (again == nullptr) return false;
    ::dlclose(again);
    return true;
}

}  // namespace

Library::Library(Library&& other) noexcept
    : handle(std::exchange(other.handle, nullptr)), staysInMemory(other.staysInMemory), name(std::move(other.name)) {}

Library& Library::operator=(Library&& other) noexcept {
    if (this != &other) {
        Close();
        handle = std::exchange(other.handle, nullptr);
        staysInMemory = other.staysInMemory;
        name = std::move(other.name);
    }
    return *this;
}

Library::~Library() {
    Close();
}

bool Library::Open(const std::string& path) {
    Close();
    auto native = NativePath(path);
    // dlopen takes an empty name for the program itself, and searches for a name without a folder.
    if (!native || native->empty()) return false;
    if (native->find('/') == std::string::npos) native->insert(0, "./");
    name = native->substr(native->rfind('/') + 1);
    const GuestCall call(name, {});  // dlopen runs the library's initialisers
    // In two steps: a library that is to stay in memory would stay there half loaded after a failure, and the first
    // exception that is thrown after that would end the process.
    handle = ::dlopen(native->c_str(), bindAll);
    if (IsOpen()) staysInMemory = KeepInMemory(*native);
    return IsOpen();
}

void* Library::Symbol(const char* symbol) const {
    return IsOpen() ? ::dlsym(handle, symbol) : nullptr;
}

bool Library::Close() {
    if (!IsOpen()) return false;
    void* const released = std::exchange(handle, nullptr);
    if (!staysInMemory) return false;
    const GuestCall call(name, {});
    return ::dlclose(released) == 0;
}

}  // namespace platform
