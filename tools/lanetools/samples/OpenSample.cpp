// SPDX-License-Identifier: MIT
#include "lanetools/samples/OpenSample.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace lanetools {

std::string OpenSample(CRsdFile& file, const std::string& path) {
    constexpr std::uintmax_t largest = std::uintmax_t{64} << 20;
    if (const auto error = file.Open(path, true)) return error.Text();
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) return error.message();
    return size > largest ? "too large for a run: more than 64 MiB" : "";
}

}  // namespace lanetools
