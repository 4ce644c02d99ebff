// SPDX-License-Identifier: MIT
#include "lanetools/export/Trimming.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <string_view>
#include <vector>

#include "lanetools/ExitCode.h"
#include "lanetools/export/ParseNumber.h"
#include "lanetools/samples/Phred.h"

namespace lanetools {

namespace {

Trim ParseMott(std::string_view limitText, const CRefused& refusal) {
    const auto limit = ParseNumber<double>(limitText);
    if (!limit || !(*limit > 0 && *limit <= 1)) throw refusal;
    return [limit = *limit](std::span<const float> percents, CStretch) { return TrimMott(percents, limit); };
}

Trim ParseWindow(std::string_view numbers, const CRefused& refusal) {
    const std::size_t comma = numbers.find(',');
    if (comma == std::string_view::npos) throw refusal;
    const auto window = ParseNumber<std::size_t>(numbers.substr(0, comma));
    const auto phred = ParseNumber<double>(numbers.substr(comma + 1));
    if (!window || *window < 1 || *window > longestWindow || !phred || !(*phred >= 0 && *phred <= largestPhred))
        throw refusal;
    return [window = *window, phred = *phred](std::span<const float> percents, CStretch) {
        return TrimWindow(percents, window, phred);
    };
}

// Probability that the call is wrong, in percent.
double ErrorPercent(float percent) {
    return std::isnan(percent) ? 100.0 : std::clamp(100.0 - static_cast<double>(percent), 0.0, 100.0);
}

}  // namespace

Trim ParseTrim(const std::string& how) {
    const CRefused refusal("--trim: '" + how +
                           "' is none of mott:LIMIT (above 0, up to 1), window:W,Q (W from 1 to 32767, Q from 0 to "
                           "93), good and none");
    const std::string_view text = how;
    if (text == "none") return [](std::span<const float> percents, CStretch) { return CStretch{0, percents.size()}; };
    if (text == "good") return [](std::span<const float>, CStretch good) { return good; };
    if (text.starts_with("mott:")) return ParseMott(text.substr(5), refusal);
    if (text.starts_with("window:")) return ParseWindow(text.substr(7), refusal);
    throw refusal;
}

// Sums are kept in percent, where those of stored 32-bit qualities are exact: two stretches of the same worth are
// equal.
CStretch TrimMott(std::span<const float> percents, double limit) {
    CStretch best;
    double bestSum = 0, sum = 0;
    std::size_t start = 0;
    for (std::size_t i = 0; i < percents.size(); ++i) {
        if (sum < 0) {  // not at 0, since a stretch that begins earlier with the same sum is the first of equals
            sum = 0;
            start = i;
        }
        sum += 100 * limit - ErrorPercent(percents[i]);
        if (sum > bestSum) {
            bestSum = sum;
            best = {start, i + 1 - start};
        }
    }
    return best;
}

CStretch TrimWindow(std::span<const float> percents, std::size_t window, double phred) {
    std::vector<double> phreds(percents.size());
    std::transform(percents.begin(), percents.end(), phreds.begin(), [](float percent) { return Phred(percent); });
    window = std::min(window, phreds.size());
    CStretch best, run;
    for (std::size_t first = 0; window > 0 && first + window <= phreds.size(); ++first) {
        const auto begin = phreds.begin() + static_cast<std::ptrdiff_t>(first);
        const double sum = std::accumulate(begin, begin + static_cast<std::ptrdiff_t>(window), 0.0);
        if (!IsAtLeast(sum / static_cast<double>(window), phred)) {
            run = {};
            continue;
        }
        run = run.length == 0 ? CStretch{first, window} : CStretch{run.start, run.length + 1};
        if (run.length > best.length) best = run;
    }
    return best;
}

}  // namespace lanetools
