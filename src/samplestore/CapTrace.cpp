#include "samplestore/CapTrace.h"

#include <algorithm>

#include "samplestore/Truncate.h"

namespace {

template <class T>
std::unique_ptr<CObject> Create() {
    return std::make_unique<T>();
}

}  // namespace

const CRuntimeClass CCapTrace::runtimeClass{"CCapTrace", schemaNone, Create<CCapTrace>, &CObject::runtimeClass};
const CRuntimeClass CRawTrace::runtimeClass{"CRawTrace", schemaNone, Create<CRawTrace>, &CCapTrace::runtimeClass};

const CRuntimeClass& CCapTrace::GetRuntimeClass() const {
    return runtimeClass;
}

void CCapTrace::ToScans(std::vector<ScanRecord>&, CAnalysisInfo&) const {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the records are given away, and go here
void CCapTrace::BuildFromScans(std::vector<ScanRecord>, const CAnalysisInfo&) {}

void CCapTrace::AllocateArrays() {
    current.assign(scanCount, 0.0);
    for (auto& channel : channels)
        channel.assign(scanCount, 0.0);
    hasChannels = true;
}

void CCapTrace::ReleaseArrays() {
    current = {};
    channels = {};
    hasChannels = false;
}

const CRuntimeClass& CRawTrace::GetRuntimeClass() const {
    return runtimeClass;
}

void CRawTrace::FreeArrays() {
    ReleaseArrays();
}

void CRawTrace::BuildFromScans(std::vector<ScanRecord> scans, const CAnalysisInfo&) {
    AllocateArrays();
    const std::size_t count = std::min<std::size_t>(scans.size(), scanCount);
    for (std::size_t i = 0; i < count; ++i) {
        current[i] = scans[i].Word(0);
        for (std::size_t k = 0; k < channelCount; ++k)
            channels[k][i] = scans[i].words[k + 1];
    }
}

void CRawTrace::ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo&) const {
    const std::size_t count = std::min({scans.size(), std::size_t{scanCount}, current.size()});
    for (std::size_t i = 0; i < count; ++i) {
        scans[i].words[0] = static_cast<std::uint32_t>(TruncateTo32(current[i]));
        for (std::size_t k = 0; k < channelCount; ++k)
            scans[i].words[k + 1] = static_cast<std::uint32_t>(TruncateTo32(channels[k][i]));
    }
}
