#include "platform/Library.h"

#include <dlfcn.h>

#include <utility>

#include "platform/Drives.h"

namespace platform {

Library::Library(Library&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}

Library& Library::operator=(Library&& other) noexcept {
    if (this != &other) {
        Close();
        handle = std::exchange(other.handle, nullptr);
    }
    return *this;
}

Library::~Library() {
    Close();
}

bool Library::Open(const std::string& path) {
    Close();
    auto native = NativePath(path);
    // The empty name would be the program itself, and a name without a folder would be searched for.
    if (!native || native->empty()) return false;
    if (native->find('/') == std::string::npos) native->insert(0, "./");
    handle = ::dlopen(native->c_str(), RTLD_NOW | RTLD_LOCAL);
    return IsOpen();
}

void* Library::Symbol(const char* name) const {
    return IsOpen() ? ::dlsym(handle, name) : nullptr;
}

bool Library::Close() {
    return IsOpen() && ::dlclose(std::exchange(handle, nullptr)) == 0;
}

}  // namespace platform
