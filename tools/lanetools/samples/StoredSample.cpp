// SPDX-License-Identifier: MIT
#include "lanetools/samples/StoredSample.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "lanetools/samples/OpenSample.h"
#include "platform/Error.h"
#include "samplestore/RsdFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr const char* failedExtension = ".fsd";

void Damage(CStoredSample& sample, std::string reason) {
    sample.state = SampleState::Damaged;
    sample.reason = std::move(reason);
}

// The system does not give the file, or not in full.
void Withhold(CStoredSample& sample, const std::string& reason) {
    sample.unread = {{sample.path, reason}};
    Damage(sample, reason);
}

void Fault(CStoredSample& sample, platform::Error error) {
    const std::string reason = CRsdFile::Reason(error);
    IsOfSystem(error) ? Withhold(sample, reason) : Damage(sample, reason);
}

bool HasAllBases(const CAnalysisInfo& analysis) {
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(analysis.basesCalled, 0));
    return analysis.sequence.size() >= count && analysis.qualityScores.size() >= count &&
           analysis.peakPositions.size() >= count && analysis.descriptors.size() >= count &&
           analysis.strengths.size() >= count;
}

void Read(CStoredSample& sample) {
    const std::string& path = sample.path;
    CRsdFile file;
    if (const std::string reason = OpenSample(file, path); !reason.empty()) return Withhold(sample, reason);
    const auto fault = file.Verify();
    // The description of a damaged file may still say which sample it is.
    if (const auto error = file.ReadInfo(sample.info)) return Fault(sample, error);
    if (fault) return Fault(sample, fault);
    if (!sample.info.processed) return Damage(sample, "A raw sample, not a result");
    sample.reason = sample.info.analysis.basecallError;
    const bool isFailed = !sample.reason.empty() || fs::path(path).extension() == failedExtension;
    if (!isFailed && !HasAllBases(sample.info.analysis)) return Damage(sample, "An array is shorter than the bases");
    sample.state = isFailed ? SampleState::Failed : SampleState::Called;
}

}  // namespace

const char* StateName(SampleState state) {
    switch (state) {
        case SampleState::Called:
            return "called";
        case SampleState::Failed:
            return "failed";
        case SampleState::Missing:
            return "missing";
        case SampleState::Damaged:
            break;
    }
    return "damaged";
}

CStoredSample UnreadSample(const std::string& path, const std::string& reason) {
    return {path, fs::path(path).stem().string(), SampleState::Damaged, reason, {}, {{path, reason}}};
}

CStoredSample ReadStoredFile(const std::string& path) {
    CStoredSample sample;
    sample.path = path;
    sample.stem = fs::path(path).stem().string();
    try {
        Read(sample);
    } catch (const std::bad_alloc&) {
        return UnreadSample(path, NoMemory());
    }
    return sample;
}

CStoredSample ReadStoredSample(const std::string& path) {
    CStoredSample sample = ReadStoredFile(path);
    if (sample.state != SampleState::Damaged || fs::path(path).extension() == failedExtension) return sample;
    if (!sample.unread.empty()) return sample;  // it may be good
    const std::string failedPath = fs::path(path).replace_extension(failedExtension).string();
    std::error_code error;
    if (fs::symlink_status(failedPath, error).type() == fs::file_type::not_found) return sample;
    CStoredSample failed = ReadStoredFile(failedPath);
    if (failed.state == SampleState::Failed) return failed;
    sample.unread = std::move(failed.unread);
    return sample;
}

}  // namespace lanetools
