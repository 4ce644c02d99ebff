// SPDX-License-Identifier: MIT
#include "lanetools/system/Access.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace lanetools {

namespace {

std::string Text(int number) {
    return std::generic_category().message(number);
}

std::string WhyNot(const std::string& path, int mode) {
    return ::access(path.c_str(), mode) == 0 ? std::string() : Text(errno);
}

}  // namespace

std::string WhyNoFilesIn(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return Text(errno);
    return S_ISDIR(status.st_mode) ? WhyNot(path, W_OK | X_OK) : Text(ENOTDIR);
}

std::string WhyNotWritable(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return errno == ENOENT ? std::string() : Text(errno);
    if (S_ISDIR(status.st_mode)) return Text(EISDIR);
    return S_ISREG(status.st_mode) ? WhyNot(path, W_OK) : "it is not a regular file";
}

bool IsProgram(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace lanetools
