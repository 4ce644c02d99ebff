#include "lanecall/CallBases.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace lanecall {

namespace {

// The spacing is part of what is searched for: every base stands in one of these classes, each a little wider than the
// one before, the middle one at the given spacing.
constexpr int classCount = 17, middleClass = 8;
constexpr double classStep = 0.03;
constexpr float changeCost = 0.4f;                // of a step to the next class from base to base
constexpr float departureCost = 0.001f;           // a base, times the square of the classes from the middle
constexpr double nearest = 0.45, farthest = 1.7;  // of two neighbouring bases, in spacings
constexpr float spacingDeviation = 0.15f;
constexpr float impossible = -1e30f;

using Scores = std::array<float, classCount>;

struct Step {
    std::array<std::int16_t, classCount> gap{};  // scans back to the base before, 0 for the first base
    std::array<std::int8_t, classCount> from{};  // the class that the best row changed from after this base
};

// The strongest channel at each scan of the range.
struct Tops {
    std::vector<float> height;
    std::vector<std::int8_t> channel;
};

Tops TopsOf(const Curves& sharp, ScanRange range) {
    Tops tops;
    for (auto scan = static_cast<std::size_t>(range.first); scan < static_cast<std::size_t>(range.end); ++scan) {
        std::size_t best = 0;
        for (std::size_t c = 1; c < channelCount; ++c)
            if (sharp[c][scan] > sharp[best][scan]) best = c;
        tops.height.push_back(static_cast<float>(sharp[best][scan]));
        tops.channel.push_back(static_cast<std::int8_t>(best));
    }
    return tops;
}

// What it is worth to have a base at a scan: about 0 for a usual peak, far below where there is none.
float Worth(float height) {
    constexpr float offset = 0.04f, usual = 0.7f, most = 0.35f;
    return std::min(most, std::log((std::max(0.0f, height) + offset) / (usual + offset)));
}

// Running sum of what it costs to pass over the peaks before each scan: a tall peak should not go without a base. Peaks
// under a taller one of another letter do not count.
std::vector<float> PassingCosts(const Tops& tops) {
    constexpr float perPeak = 3;
    const std::size_t count = tops.height.size();
    std::vector<float> sums(count + 1, 0.0f);
    for (std::size_t i = 0; i < count; ++i) {
        const bool peak =
            i > 0 && i + 1 < count && tops.height[i] >= tops.height[i - 1] && tops.height[i] > tops.height[i + 1];
        sums[i + 1] = sums[i] + (peak ? perPeak * std::min(1.0f, tops.height[i]) : 0.0f);
    }
    return sums;
}

// Lets a row move to a neighbouring class of spacing.
void AllowChange(Scores& scores, Step& step) {
    for (int k = 0; k < classCount; ++k)
        step.from[static_cast<std::size_t>(k)] = static_cast<std::int8_t>(k);
    const auto pass = [&](std::size_t k, std::size_t neighbour) {
        if (scores[neighbour] - changeCost > scores[k]) {
            scores[k] = scores[neighbour] - changeCost;
            step.from[k] = step.from[neighbour];
        }
    };
    for (std::size_t k = 1; k < classCount; ++k)
        pass(k, k - 1);
    for (std::size_t k = classCount - 1; k > 0; --k)
        pass(k - 1, k);
}

// Takes the better of the rows so far and the rows that end `gap` scans back. The gap costs by the square near the
// spacing of the class and in proportion far from it; `passed` is the cost of the peaks in between.
void TryGap(int gap, float passed, const Scores& before, const Scores& inverseSpacings, Scores& scores, Step& step) {
    for (std::size_t k = 0; k < classCount; ++k) {
        const float u = std::abs(static_cast<float>(gap) * inverseSpacings[k] - 1.0f) * (1.0f / spacingDeviation);
        const float value = before[k] - passed - (u < 2.0f ? 0.5f * u * u : 2.0f * u - 2.0f);
        const bool better = value > scores[k];
        scores[k] = better ? value : scores[k];
        step.gap[k] = better ? static_cast<std::int16_t>(gap) : step.gap[k];
    }
}

class CRowSearch {
  public:
    CRowSearch(const Curves& sharp, ScanRange scanRange, const CTrack& track)
        : range(scanRange), spacing(track), tops(TopsOf(sharp, scanRange)), passing(PassingCosts(tops)) {
        for (int k = 0; k < classCount; ++k)
            ratios[static_cast<std::size_t>(k)] = std::exp(classStep * (k - middleClass));
    }

    std::vector<Call> Run() {
        const int count = range.Length();
        scores.resize(static_cast<std::size_t>(count));
        steps.resize(scores.size());
        for (int i = 0; i < count; ++i)
            Advance(i);
        return Trace();
    }

  private:
    // The best rows of bases that end at scan i of the range, one for each class.
    void Advance(int i) {
        constexpr double covered = 0.25;  // spacings to either side in which a base accounts for every peak
        const auto at = static_cast<std::size_t>(i);
        const double distance = spacing.At(range.first + i);
        Scores inverseSpacings{};
        for (std::size_t k = 0; k < classCount; ++k)
            inverseSpacings[k] = static_cast<float>(1 / (distance * ratios[k]));
        scores[at].fill(i < 2 * distance ? 0 : impossible);  // the first base lies near the start
        const int shortest = std::max(1, static_cast<int>(std::ceil(nearest * distance)));
        const int longest = std::min(i, static_cast<int>(farthest * distance));
        const int reach = static_cast<int>(covered * distance);
        for (int gap = shortest; gap <= longest; ++gap) {
            const auto before = static_cast<std::size_t>(i - gap), from = before + static_cast<std::size_t>(reach) + 1;
            const std::size_t to = std::max(from, at - static_cast<std::size_t>(std::min(i, reach)));
            const float passed = from < passing.size() ? passing[std::min(to, passing.size() - 1)] - passing[from] : 0;
            TryGap(gap, passed, scores[before], inverseSpacings, scores[at], steps[at]);
        }
        for (int k = 0; k < classCount; ++k)
            scores[at][static_cast<std::size_t>(k)] +=
                Worth(tops.height[at]) - departureCost * static_cast<float>((k - middleClass) * (k - middleClass));
        if (i + 2 * distance >= range.Length()) ConsiderEnd(i);
        AllowChange(scores[at], steps[at]);
    }

    void ConsiderEnd(int i) {
        const Scores& here = scores[static_cast<std::size_t>(i)];
        const auto top = std::max_element(here.begin(), here.end());
        if (last >= 0 && !(*top > lastScore)) return;
        last = i;
        lastScore = *top;
        lastClass = static_cast<std::size_t>(top - here.begin());
    }

    std::vector<Call> Trace() const {
        std::vector<Call> calls;
        std::size_t k = lastClass;
        for (int i = last; i >= 0;) {
            const auto at = static_cast<std::size_t>(i);
            const int scan = range.first + i, gap = steps[at].gap[k];
            calls.push_back({static_cast<double>(scan), tops.channel[at], spacing.At(scan) * ratios[k]});
            if (gap == 0) break;
            i -= gap;
            k = static_cast<std::size_t>(steps[static_cast<std::size_t>(i)].from[k]);
        }
        std::reverse(calls.begin(), calls.end());
        return calls;
    }

    const ScanRange range;
    const CTrack& spacing;
    const Tops tops;
    const std::vector<float> passing;
    std::array<double, classCount> ratios{};
    std::vector<Scores> scores;  // of the best row that ends at each scan, in each class
    std::vector<Step> steps;
    int last = -1;  // where the best whole row ends
    float lastScore = impossible;
    std::size_t lastClass = 0;
};

}  // namespace

std::vector<Call> CallBases(const Curves& sharp, ScanRange range, const CTrack& spacing) {
    return CRowSearch(sharp, range, spacing).Run();
}

}  // namespace lanecall
