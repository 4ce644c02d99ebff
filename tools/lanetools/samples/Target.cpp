// SPDX-License-Identifier: MIT
#include "lanetools/samples/Target.h"

#include <filesystem>
#include <system_error>

#include "lanetools/ExitCode.h"
#include "samplestore/SampleFile.h"

namespace lanetools {

namespace fs = std::filesystem;

std::string ResolveTarget(const std::string& path) {
    std::string target = path;
    std::error_code ignored;
    if (fs::exists(target, ignored)) {
        if (!fs::is_regular_file(target, ignored)) throw CRefused(target + ": is not a file that can be replaced");
        if (fs::is_symlink(target, ignored)) target = fs::canonical(target).string();
    }
    if (HasSampleExtension(target) || fs::path(target).extension() == ".fsd")
        throw CRefused(target + ": is the name of a sample file, which is never replaced");
    return target;
}

}  // namespace lanetools
