#include "lanecall/CallBases.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace lanecall {

namespace {

// The spacing is part of what is searched for: every base stands in one of several classes, each a little wider than
// the one before, the middle one at the given spacing.
struct FineClasses {
    static constexpr int count = 16, middle = 8;
    static constexpr double step = 0.03;  // of the logarithm of the spacing
};
// Enough to compare rows that start from the same spacing.
struct CoarseClasses {
    static constexpr int count = 4, middle = 2;
    static constexpr double step = 0.08;
};
constexpr double changeCost = 0.4 / 0.03;  // of a change of class from base to base, for each unit of its step
constexpr double departureCost = 0.001 / (0.03 * 0.03);  // per base, times the square of the departure from the middle
constexpr double nearest = 0.45, farthest = 1.7;         // of two neighbouring bases, in spacings
constexpr float spacingDeviation = 0.15f;
constexpr float impossible = -1e30f;

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

// The score of a row that goes on after `gap` scans: the gap costs by the square near the spacing and in proportion far
// from it; `passed` is the cost of the peaks in between.
inline float GoOn(float before, float gap, float inverseSpacing, float passed) {
    const float u = std::abs(gap * inverseSpacing - 1.0f) * (1.0f / spacingDeviation);
    const float near = 0.5f * (u + 2.0f - std::abs(u - 2.0f));  // the smaller of u and 2, without a branch
    return before - passed - near * (u - 0.5f * near);
}

template <class Classes>
class CRowSearch {
  public:
    CRowSearch(const Curves& sharp, ScanRange scanRange, const CTrack& track)
        : range(scanRange), spacing(track), tops(TopsOf(sharp, scanRange)), passing(PassingCosts(tops)) {
        for (std::size_t k = 0; k < classCount; ++k) {
            const double departure = Classes::step * (static_cast<int>(k) - Classes::middle);
            inverseRatios[k] = static_cast<float>(std::exp(-departure));
            departures[k] = static_cast<float>(departureCost * departure * departure);
        }
    }

    double Score() {
        Search();
        return static_cast<double>(lastScore);
    }
    std::vector<Call> Run() {
        Search();
        return Trace();
    }

  private:
    static constexpr std::size_t classCount = Classes::count;
    using Scores = std::array<float, classCount>;
    using Changes = std::array<std::uint8_t, classCount>;  // the class that the best row changed from after a base

    void Search() {
        const int count = range.Length();
        scores.resize(static_cast<std::size_t>(count));
        changes.resize(scores.size());
        for (int i = 0; i < count; ++i)
            Advance(i);
    }

    // Lets a row move to a neighbouring class of spacing.
    static void AllowChange(Scores& here, Changes& from) {
        constexpr auto cost = static_cast<float>(changeCost * Classes::step);
        for (std::size_t k = 0; k < classCount; ++k)
            from[k] = static_cast<std::uint8_t>(k);
        const auto pass = [&](std::size_t k, std::size_t neighbour) {
            if (here[neighbour] - cost > here[k]) {
                here[k] = here[neighbour] - cost;
                from[k] = from[neighbour];
            }
        };
        for (std::size_t k = 1; k < classCount; ++k)
            pass(k, k - 1);
        for (std::size_t k = classCount - 1; k > 0; --k)
            pass(k - 1, k);
    }

    struct Gaps {
        int shortest, longest;  // in scans; none when the longest is the smaller one
    };
    Gaps GapsAt(int i, double distance) const {
        return {std::max(1, static_cast<int>(std::ceil(nearest * distance))),
                std::min(i, static_cast<int>(farthest * distance))};
    }
    static float Start(int i, double distance) {
        return i < 2 * distance ? 0 : impossible;  // the first base lies near the start
    }
    // The cost of the peaks between a base at scan i and one `gap` scans before.
    float Passed(int i, int gap, double distance) const {
        constexpr double covered = 0.25;  // spacings to either side in which a base accounts for every peak
        const int reach = static_cast<int>(covered * distance);
        const int from = i - gap + reach + 1, to = i - reach;
        return from < to ? passing[static_cast<std::size_t>(to)] - passing[static_cast<std::size_t>(from)] : 0;
    }

    // The scores of the best rows that end at scan i of the range, one for each class.
    void Advance(int i) {
        const auto at = static_cast<std::size_t>(i);
        const double distance = spacing.At(range.first + i);
        const Scores inverseSpacings = InverseSpacings(distance);
        Scores here;
        here.fill(Start(i, distance));
        const Gaps gaps = GapsAt(i, distance);
        for (int gap = gaps.shortest; gap <= gaps.longest; ++gap) {
            const float passed = Passed(i, gap, distance);
            const Scores& before = scores[at - static_cast<std::size_t>(gap)];
            for (std::size_t k = 0; k < classCount; ++k)
                here[k] = std::max(here[k], GoOn(before[k], static_cast<float>(gap), inverseSpacings[k], passed));
        }
        const float worth = Worth(tops.height[at]);
        for (std::size_t k = 0; k < classCount; ++k)
            here[k] += worth - departures[k];
        if (i + 2 * distance >= range.Length()) ConsiderEnd(i, here);
        AllowChange(here, changes[at]);
        scores[at] = here;
    }

    // The gap before the base at scan i in the best row of class k; 0 for the first base.
    int GapBefore(int i, std::size_t k) const {
        const double distance = spacing.At(range.first + i);
        const float inverseSpacing = InverseSpacings(distance)[k];
        const Gaps gaps = GapsAt(i, distance);
        float best = Start(i, distance);
        int bestGap = 0;
        for (int gap = gaps.shortest; gap <= gaps.longest; ++gap) {
            const float value = GoOn(scores[static_cast<std::size_t>(i - gap)][k], static_cast<float>(gap),
                                     inverseSpacing, Passed(i, gap, distance));
            if (value > best) {
                best = value;
                bestGap = gap;
            }
        }
        return bestGap;
    }

    Scores InverseSpacings(double distance) const {
        Scores inverse;
        for (std::size_t k = 0; k < classCount; ++k)
            inverse[k] = inverseRatios[k] / static_cast<float>(distance);
        return inverse;
    }

    void ConsiderEnd(int i, const Scores& here) {
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
            const int scan = range.first + i, gap = GapBefore(i, k);
            calls.push_back({static_cast<double>(scan), tops.channel[at], spacing.At(scan) / inverseRatios[k]});
            if (gap == 0) break;
            i -= gap;
            k = changes[static_cast<std::size_t>(i)][k];
        }
        std::reverse(calls.begin(), calls.end());
        return calls;
    }

    const ScanRange range;
    const CTrack& spacing;
    const Tops tops;
    const std::vector<float> passing;
    Scores inverseRatios{};      // of the classes' spacings to the given one
    Scores departures{};         // what a base in each class costs
    std::vector<Scores> scores;  // of the best row that ends at each scan, in each class
    std::vector<Changes> changes;
    int last = -1;  // where the best whole row ends
    float lastScore = impossible;
    std::size_t lastClass = 0;
};

}  // namespace

std::vector<Call> CallBases(const Curves& sharp, ScanRange range, const CTrack& spacing) {
    return CRowSearch<FineClasses>(sharp, range, spacing).Run();
}

double RowScore(const Curves& sharp, ScanRange range, const CTrack& spacing) {
    return CRowSearch<CoarseClasses>(sharp, range, spacing).Score();
}

void CentreCalls(std::vector<Call>& calls, const Curves& sharp, ScanRange range) {
    constexpr double share = 0.3;  // of the gaps to the neighbours
    std::vector<double> centres;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const Curve& curve = sharp[static_cast<std::size_t>(calls[i].channel)];
        const double before = i > 0 ? calls[i].scan - calls[i - 1].scan : calls[i].spacing;
        const double after = i + 1 < calls.size() ? calls[i + 1].scan - calls[i].scan : calls[i].spacing;
        const int last = static_cast<int>(curve.size()) - 2;
        const int from = std::max(1, static_cast<int>(std::ceil(calls[i].scan - share * before)));
        const int to = std::min(last, static_cast<int>(calls[i].scan + share * after));
        double centre = calls[i].scan;
        for (int scan = from; scan <= to; ++scan) {
            const double* y = curve.data() + scan;
            const double bend = y[-1] - 2 * y[0] + y[1];
            if (y[0] >= y[-1] && y[0] >= y[1] && bend < 0) centre = scan + 0.5 * (y[-1] - y[1]) / bend;
        }
        centre = std::clamp(centre, calls[i].scan - share * before, calls[i].scan + share * after);
        centres.push_back(std::clamp(centre, static_cast<double>(range.first), range.end - 1.0));
    }
    for (std::size_t i = 0; i < calls.size(); ++i)
        calls[i].scan = centres[i];
}

}  // namespace lanecall
