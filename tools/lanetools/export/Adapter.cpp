// SPDX-License-Identifier: MIT
#include "lanetools/export/Adapter.h"

#include <algorithm>

#include "lanetools/ExitCode.h"
#include "lanetools/export/Iupac.h"

namespace lanetools {

namespace {

std::vector<std::uint8_t> BaseSets(const std::string& letters) {
    std::vector<std::uint8_t> sets(letters.size());
    std::transform(letters.begin(), letters.end(), sets.begin(), BaseSet);
    return sets;
}

}  // namespace

CAdapter::CAdapter(const std::string& sequence, double mismatch) : forward(BaseSets(sequence)) {
    if (forward.empty()) throw CRefused("--adapter: the sequence is empty");
    if (const auto bad = std::find(forward.begin(), forward.end(), 0); bad != forward.end())
        throw CRefused("--adapter: '" + std::string(1, sequence[static_cast<std::size_t>(bad - forward.begin())]) +
                       "' in '" + sequence + "' is not an IUPAC letter");
    reverse = OtherStrand(forward);
    constexpr double rounding = 1e-9;  // 0.1 of 30 letters is 3
    maxMismatches = static_cast<std::size_t>(mismatch * static_cast<double>(forward.size()) + rounding);
}

CAdapter::Sets CAdapter::OtherStrand(const Sets& strand) {
    Sets other(strand.rbegin(), strand.rend());
    std::transform(other.begin(), other.end(), other.begin(), Complement);
    return other;
}

bool CAdapter::IsAt(const Sets& strand, const Sets& read, std::size_t position) const {
    std::size_t differing = 0;
    for (std::size_t i = 0; i < strand.size() && differing <= maxMismatches; ++i)
        differing += read[position + i] == 0 || (read[position + i] & ~strand[i]) != 0;
    return differing <= maxMismatches;
}

CStretch CAdapter::Cut(const std::string& letters) const {
    const Sets read = BaseSets(letters);
    std::size_t start = 0, end = read.size();
    for (std::size_t at = 0; at + forward.size() <= read.size(); ++at) {
        if (!IsAt(forward, read, at) && !IsAt(reverse, read, at)) continue;
        const bool isInFirstHalf = 2 * at + forward.size() <= read.size();
        if (isInFirstHalf)
            start = at + forward.size();
        else
            end = std::min(end, at);
    }
    return {start, end > start ? end - start : 0};
}

}  // namespace lanetools
