// SPDX-License-Identifier: MIT
#include "lanetools/import/StoreSample.h"

#include <cstddef>
#include <filesystem>
#include <system_error>

#include "platform/AtomicFile.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "samplestore/NewSample.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;
using platform::Error;

constexpr std::size_t largestSample = std::size_t{64} << 20;  // of a million scans

// False if they differ, or if one of them cannot be read.
bool HaveSameBytes(const std::string& a, const std::string& b) {
    std::string first, second;
    if (platform::ReadFile(a, first, largestSample) || platform::ReadFile(b, second, largestSample)) return false;
    return first == second;
}

void Demand(Error error) {
    if (error == Error(-1)) throw CNotStored("its texts do not fit in a sample file");
    if (error) throw CNotStored(error.Text());
}

}  // namespace

bool StoreSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans) {
    std::error_code error;
    fs::create_directory(fs::path(path).parent_path(), error);
    if (error) throw CNotStored(error.message());
    platform::AtomicFile file;
    const Error notOpened = file.Open(path);
    // If nothing may be written here, the sample may still exist already: it is written elsewhere and compared.
    platform::AtomicFile elsewhere;
    if (notOpened && elsewhere.Open(fs::temp_directory_path() / "imported.rsd")) Demand(notOpened);
    platform::AtomicFile& made = notOpened ? elsewhere : file;
    Demand(WriteSample(made.TemporaryName(), info, scans));
    if (HaveSameBytes(made.TemporaryName(), path)) return false;
    Demand(notOpened);
    Demand(file.Commit());
    return true;
}

}  // namespace lanetools
