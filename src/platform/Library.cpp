// SPDX-License-Identifier: MIT
#include "platform/Library.h"

#include <dlfcn.h>

#include <utility>

#include "platform/Drives.h"
#include "platform/Guest.h"

namespace platform {

Library::Library(Library&& other) noexcept
    : handle(std::exchange(other.handle, nullptr)), name(std::move(other.name)) {}

Library& Library::operator=(Library&& other) noexcept {
    if (this != &other) {
        Close();
        handle = std::exchange(other.handle, nullptr);
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
    handle = ::dlopen(native->c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    return IsOpen();
}

void* Library::Symbol(const char* symbol) const {
    return IsOpen() ? ::dlsym(handle, symbol) : nullptr;
}

bool Library::Close() {
    if (!IsOpen()) return false;
    const GuestCall call(name, {});
    return ::dlclose(std::exchange(handle, nullptr)) == 0;
}

}  // namespace platform
