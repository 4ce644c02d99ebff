// SPDX-License-Identifier: MIT
#include "samplestore/CapTrace.h"

#include <utility>

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

void CCapTrace::BuildFromScans(std::span<const ScanRecord>, const CAnalysisInfo&) {}

void CCapTrace::TakeScans(std::unique_ptr<ScanRecord[]> scans, const CAnalysisInfo&) {
    ReleaseArrays();
    kept = std::move(scans);
    hasChannels = true;
}

void CCapTrace::FillArrays() {
    if (!kept) return;
    Decode({kept.get(), scanCount});
    kept.reset();
}

void CCapTrace::ReleaseArrays() {
    current = {};
    channels = {};
    kept.reset();
    hasChannels = false;
}

const CRuntimeClass& CRawTrace::GetRuntimeClass() const {
    return runtimeClass;
}

void CRawTrace::FreeArrays() {
    ReleaseArrays();
}

void CRawTrace::BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo&) {
    kept.reset();
    Decode(scans);
}

void CRawTrace::Decode(std::span<const ScanRecord> scans) {
    FillFrom(scans, [](std::uint32_t word) { return static_cast<double>(word); });
}

void CRawTrace::ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo&) const {
    if (kept) {
        std::copy_n(kept.get(), std::min<std::size_t>(scans.size(), scanCount), scans.begin());
        return;
    }
    const std::size_t count = std::min({scans.size(), std::size_t{scanCount}, current.size()});
    for (std::size_t i = 0; i < count; ++i) {
        scans[i].words[0] = static_cast<std::uint32_t>(TruncateTo32(current[i]));
        for (std::size_t k = 0; k < channelCount; ++k)
            scans[i].words[k + 1] = static_cast<std::uint32_t>(TruncateTo32(channels[k][i]));
    }
}
