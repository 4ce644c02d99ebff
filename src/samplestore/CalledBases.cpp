// SPDX-License-Identifier: MIT
#include "samplestore/CalledBases.h"

#include "samplestore/Truncate.h"

CCalledBase::CCalledBase(const BaseRecord& record, std::span<const PeakRecord> recordPeaks)
    : letter(record.letter),
      quality(record.quality),
      hasOnePeak(recordPeaks.size() == 1),
      strengths{record.strengths[0], record.strengths[1], record.strengths[2], record.strengths[3]},
      descriptor(record.descriptor) {
    if (hasOnePeak)
        onlyPeak = recordPeaks.front();
    else
        peaks.assign(recordPeaks.begin(), recordPeaks.end());
}

const CCalledBase* CCalledBases::Find(std::int32_t i) const {
    return i >= 0 && i < Count() ? &bases[static_cast<std::size_t>(i)] : nullptr;
}

char CCalledBases::GetLetter(std::int32_t i) const {
    const CCalledBase* base = Find(i);
    return base ? base->Letter() : 'N';
}

std::int32_t CCalledBases::GetDescriptor(std::int32_t i) const {
    const CCalledBase* base = Find(i);
    return base ? base->Descriptor() : 0;
}

BaseStrengths CCalledBases::GetStrengths(std::int32_t i) const {
    const CCalledBase* base = Find(i);
    return base ? base->Strengths() : BaseStrengths{1.0f, 1.0f, 1.0f, 1.0f};
}

std::span<const PeakRecord> CCalledBases::GetPeaks(std::int32_t i) const {
    const CCalledBase* base = Find(i);
    return base ? base->Peaks() : std::span<const PeakRecord>{};
}

double CCalledBases::GetQuality(std::int32_t i) const {
    const CCalledBase* base = Find(i);
    return base ? static_cast<double>(base->Quality()) : 0.0;
}

float CCalledBases::GetPosition(std::int32_t i) const {
    const CCalledBase* base = Find(i);
    return base ? base->Position() : 0.0f;
}

namespace {

std::int32_t NearestScan(const CCalledBases& bases, std::int32_t i) {
    const auto peaks = bases.GetPeaks(i);
    return peaks.empty() ? 0 : TruncateTo32(static_cast<double>(peaks.front().position) + 0.5);
}

}  // namespace

std::int32_t CCalledBases::GoodStartScan() const {
    return NearestScan(*this, goodStart);
}

std::int32_t CCalledBases::GoodEndScan() const {
    const std::int64_t last = std::int64_t{goodStart} + goodLength - 1;
    if (last < 0) return NearestScan(*this, goodStart);
    return last < Count() ? NearestScan(*this, static_cast<std::int32_t>(last)) : 0;
}
