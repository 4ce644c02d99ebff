#include "tracewriter/WholeFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <random>

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

CWholeFile::~CWholeFile() {
    Discard();
}

int CWholeFile::Open(const std::string& path) {
    if (IsOpen()) return EBUSY;
    // A rename would replace a write-protected file without a word, so its protection is asked for here.
    platform::File existing;
    if (const int error = existing.Open(path, platform::OpenMode::Update); error != 0 && error != ENOENT) return error;
    const std::string name = PassingName(path);
    if (const int error = file.Open(name, platform::OpenMode::CreateOrEmpty); error != 0) return error;
    target = path;
    passing = name;
    return 0;
}

int CWholeFile::Commit(std::span<const std::byte> data) {
    if (!IsOpen()) return EBADF;
    int error = file.Write(data);
    const int closeError = file.Close();
    if (error == 0) error = closeError;
    if (error == 0) error = platform::RenameFile(passing, target);
    if (error == 0)
        passing.clear();
    else
        Discard();
    return error;
}

void CWholeFile::Discard() {
    file.Close();
    if (!passing.empty()) platform::DeleteFile(passing);
    passing.clear();
}
