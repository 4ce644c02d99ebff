// SPDX-License-Identifier: MIT
// Conversion of the program's paths to host paths.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The host's form of a program path: "\" becomes "/", and a drive at the start is replaced by the folder it is mapped
// to. "Z:" is the root; other letters, case ignored, are looked up in section [Drives] of the registry store. A drive
// path without a separator after the colon also starts at the drive's root. Nothing if the drive is not mapped or the
// path contains a NUL.
std::optional<std::string> NativePath(std::string_view path);

}  // namespace platform
