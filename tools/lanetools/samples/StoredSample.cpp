#include "lanetools/samples/StoredSample.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "lanetools/ExitCode.h"
#include "samplestore/RsdFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

CStoredSample& Damage(CStoredSample& sample, std::string reason) {
    sample.state = SampleState::Damaged;
    sample.reason = std::move(reason);
    return sample;
}

bool HasAllBases(const CAnalysisInfo& analysis) {
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(analysis.basesCalled, 0));
    return analysis.sequence.size() >= count && analysis.qualityScores.size() >= count &&
           analysis.peakPositions.size() >= count;
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

CStoredSample ReadStoredSample(const std::string& path) {
    CStoredSample sample;
    sample.path = path;
    sample.stem = fs::path(path).stem().string();
    CRsdFile file;
    if (const auto error = file.Open(path, true)) return Damage(sample, CRsdFile::Reason(error));
    if (const auto error = file.ReadInfo(sample.info)) return Damage(sample, CRsdFile::Reason(error));
    if (!HasAllBases(sample.info.analysis)) return Damage(sample, "An array is shorter than the bases");
    sample.reason = sample.info.analysis.basecallError;
    sample.state = sample.reason.empty() ? SampleState::Called : SampleState::Failed;
    return sample;
}

}  // namespace lanetools
