// SPDX-License-Identifier: MIT
#include "discovery/SplitPath.h"

#include <algorithm>
#include <utility>

std::string SplitPath(std::string& path) {
    const std::size_t separator = path.find_last_of("\\/");
    if (separator == std::string::npos) return std::exchange(path, {});
    std::string component = path.substr(separator + 1);
    path.resize(separator);
    return component;
}

std::string LastComponent(std::string path) {
    return SplitPath(path);
}

std::string WithoutExtension(const std::string& path) {
    constexpr std::size_t extensionLength = 4;  // with its dot
    return path.substr(0, path.size() - std::min(path.size(), extensionLength));
}
