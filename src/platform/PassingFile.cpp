#include "platform/PassingFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <random>

#include "platform/Files.h"

namespace platform {

namespace {

// A name in the same folder that no other program run uses; short, so that it fits wherever the target's name does.
std::string PassingName(const std::string& path) {
    static std::mt19937_64 numbers{std::uint64_t{std::random_device{}()} << 32 | std::random_device{}()};
    char leaf[32];
    std::snprintf(leaf, sizeof leaf, ".lw%016llx.tmp", static_cast<unsigned long long>(numbers()));
    const std::size_t folderEnd = path.find_last_of("/\\");
    if (folderEnd != std::string::npos) return path.substr(0, folderEnd + 1) + leaf;
    const bool hasDrive = path.size() > 1 && path[1] == ':';
    return (hasDrive ? path.substr(0, 2) : std::string()) + leaf;
}

}  // namespace

PassingFile::~PassingFile() {
    Discard();
}

Error PassingFile::Begin(const std::string& path) {
    // A rename would replace a write-protected file without a word, so its protection is asked for here.
    File existing;
    if (const Error error = existing.Open(path, OpenMode::Update); error && error != ENOENT) return error;
    Discard();
    target = path;
    passing = PassingName(path);
    return success;
}

Error PassingFile::Finish() {
    if (passing.empty()) return EBADF;
    const Error error = RenameFile(passing, target);
    if (error) DeleteIfThere(passing);
    passing.clear();
    return error;
}

void PassingFile::Discard() {
    if (!passing.empty()) DeleteIfThere(passing);
    passing.clear();
}

}  // namespace platform
