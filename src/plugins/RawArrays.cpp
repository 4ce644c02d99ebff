// SPDX-License-Identifier: MIT
#include "plugins/RawArrays.h"

#include <algorithm>
#include <limits>
#include <new>
#include <span>

namespace {

std::int32_t CheckedScans(const CCapTrace& raw) {
    if (raw.scanCount > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) throw std::bad_alloc();
    return static_cast<std::int32_t>(raw.scanCount);
}

}  // namespace

CRawArrays::CRawArrays(const CCapTrace& raw)
    : scans(CheckedScans(raw)), values(std::make_unique<double[]>(arrayCount * static_cast<std::size_t>(scans))) {
    for (std::size_t k = 0; k < arrayCount; ++k) {
        const std::span<const double> source = k < channelCount ? raw.channels[k] : raw.current;
        pointers[k] = values.get() + k * static_cast<std::size_t>(scans);
        std::copy_n(source.begin(), std::min<std::size_t>(source.size(), raw.scanCount), pointers[k]);
    }
}
