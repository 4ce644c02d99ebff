// SPDX-License-Identifier: MIT
#include "lanetools/samples/StoredSample.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <utility>

#include "platform/Error.h"
#include "samplestore/RsdFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr const char* failedExtension = ".fsd";

CStoredSample& Damage(CStoredSample& sample, std::string reason) {
    sample.state = SampleState::Damaged;
    sample.reason = std::move(reason);
    return sample;
}

bool HasAllBases(const CAnalysisInfo& analysis) {
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(analysis.basesCalled, 0));
    return analysis.sequence.size() >= count && analysis.qualityScores.size() >= count &&
           analysis.peakPositions.size() >= count && analysis.descriptors.size() >= count &&
           analysis.strengths.size() >= count;
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

CStoredSample ReadStoredFile(const std::string& path) {
    CStoredSample sample;
    sample.path = path;
    sample.stem = fs::path(path).stem().string();
    CRsdFile file;
    if (const auto error = file.Open(path, true)) return Damage(sample, CRsdFile::Reason(error));
    const auto fault = file.Verify();
    // The description of a damaged file may still say which sample it is.
    if (const auto error = file.ReadInfo(sample.info)) return Damage(sample, CRsdFile::Reason(error));
    if (fault) return Damage(sample, CRsdFile::Reason(fault));
    if (!sample.info.processed) return Damage(sample, "A raw sample, not a result");
    sample.reason = sample.info.analysis.basecallError;
    const bool isFailed = !sample.reason.empty() || fs::path(path).extension() == failedExtension;
    if (!isFailed && !HasAllBases(sample.info.analysis)) return Damage(sample, "An array is shorter than the bases");
    sample.state = isFailed ? SampleState::Failed : SampleState::Called;
    return sample;
}

CStoredSample ReadStoredSample(const std::string& path) {
    CStoredSample sample = ReadStoredFile(path);
    if (sample.state != SampleState::Damaged || fs::path(path).extension() == failedExtension) return sample;
    CStoredSample failed = ReadStoredFile(fs::path(path).replace_extension(failedExtension).string());
    return failed.state == SampleState::Failed ? failed : sample;
}

}  // namespace lanetools
