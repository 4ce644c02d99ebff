// SPDX-License-Identifier: MIT
#include "lanetools/import/StoreSample.h"

#include <cerrno>
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

// The bytes of a sample file under a temporary name: next to where it goes or, if nothing may be written there,
// elsewhere, for the comparison with a file that exists already.
class CNewFile {
  public:
    CNewFile(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans)
        : notOpened(file.Open(path)) {
        if (notOpened && elsewhere.Open(fs::temp_directory_path() / "imported.rsd")) Demand(notOpened);
        Demand(WriteSample(Name(), info, scans));
    }
    const std::string& Name() const { return notOpened ? elsewhere.TemporaryName() : file.TemporaryName(); }
    Error Replace() { return notOpened ? notOpened : file.Commit(); }
    Error Add() { return notOpened ? notOpened : file.CommitNew(); }

  private:
    platform::AtomicFile file, elsewhere;
    Error notOpened;
};

}  // namespace

bool IsStored(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans) {
    return HaveSameBytes(CNewFile(path, info, scans).Name(), path);
}

Stored StoreSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans, bool isOwn) {
    std::error_code error;
    fs::create_directory(fs::path(path).parent_path(), error);
    if (error) throw CNotStored(error.message());
    CNewFile made(path, info, scans);
    if (!isOwn) {
        const Error added = made.Add();
        if (added == EEXIST) return Stored::Taken;
        Demand(added);
        return Stored::New;
    }
    if (HaveSameBytes(made.Name(), path)) return Stored::Unchanged;
    Demand(made.Replace());
    return Stored::Updated;
}

}  // namespace lanetools
