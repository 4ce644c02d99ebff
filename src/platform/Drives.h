// From the program's paths to the host's.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The host's form of a program path: "\" becomes "/", a drive at the head is replaced by what it is mapped to ("Z:" is
// the root, other letters are looked up in section [Drives] of the registry store, letter case ignored; a drive path
// without a separator behind the colon counts from the drive's root). Nothing when the drive is not mapped.
std::optional<std::string> NativePath(std::string_view path);

}  // namespace platform
