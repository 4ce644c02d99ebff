// SPDX-License-Identifier: MIT
#include "lanecall/CallBases.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "lanecall/Processor.h"

namespace lanecall {

namespace {

// The search also decides on the spacing. At every base the spacing is in one of several classes, each a little wider
// than the one before; the middle class is the given spacing. With steps of 3 % these are 0.79 to 1.23 of it.
struct FineClasses {
    static constexpr int count = 16, middle = 8;
    static constexpr double step = 0.03;  // natural logarithm of the ratio of two classes
};
// For comparing rows that start from the same spacing: 0.85 to 1.08 of it.
struct CoarseClasses {
    static constexpr int count = 4, middle = 2;
    static constexpr double step = 0.08;
};
// Costs in units of the score (see BaseScore), found by trial for steps of 3 % and stated per unit of the logarithm, so
// that they hold for any step.
constexpr double changeCost = 0.4 / 0.03;                // of a change of the spacing from base to base
constexpr double departureCost = 0.002 / (0.03 * 0.03);  // per base, times the square of the distance from the middle
constexpr double minGap = 0.45, maxGap = 1.7;            // distances of neighbouring bases that are tried, in spacings
constexpr float spacingDeviation = 0.15f;                // departure of a gap, in spacings, that costs 0.5
constexpr float impossible = -1e30f;

// The height and the number of the highest channel at each scan of the range.
struct Tops {
    std::vector<float> height;
    std::vector<std::int8_t> channel;
};

Tops TopsOf(const Curves& sharp, ScanRange range) {
    const auto count = static_cast<std::size_t>(range.Length());
    Tops tops{std::vector<float>(count), std::vector<std::int8_t>(count)};
    std::array<const double*, channelCount> from;
    for (std::size_t c = 0; c < channelCount; ++c)
        from[c] = sharp[c].data() + range.first;
    for (std::size_t i = 0; i < count; ++i) {
        double height = from[0][i];
        int best = 0;
        for (int c = 1; c < channelCount; ++c) {
            const double other = from[static_cast<std::size_t>(c)][i];
            best = other > height ? c : best;
            height = std::max(height, other);
        }
        tops.height[i] = static_cast<float>(height);
        tops.channel[i] = static_cast<std::int8_t>(best);
    }
    return tops;
}

// What a base at a scan of this height adds to the score: 0.34 on a usual peak (height 1), -0.7 on one a third as high.
float BaseScore(float height) {
    constexpr float offset = 0.04f;  // limits what a base without any peak costs, to 2.9
    constexpr float usual = 0.7f;    // height that adds 0
    constexpr float most = 0.35f;    // so that a few huge peaks do not decide the row
    return std::min(most, std::log((std::max(0.0f, height) + offset) / (usual + offset)));
}

// The costs of peaks without a base, summed up over the scans: the difference of two entries is the cost of the peaks
// between them. Only the highest channel at a scan counts.
std::vector<float> SkippingCosts(const Tops& tops) {
    constexpr float perPeak = 3;  // of height 1, by trial
    const std::size_t count = tops.height.size();
    std::vector<float> sums(count + 1, 0.0f);
    for (std::size_t i = 0; i < count; ++i) {
        const bool peak =
            i > 0 && i + 1 < count && tops.height[i] >= tops.height[i - 1] && tops.height[i] > tops.height[i + 1];
        sums[i + 1] = sums[i] + (peak ? perPeak * std::min(1.0f, tops.height[i]) : 0.0f);
    }
    return sums;
}

// The score of a row of score `before` that is continued after `gap` scans; `skipped` is the cost of the peaks in
// between. The cost of the gap is Huber's: with u its departure from the spacing in units of `spacingDeviation`, it is
// u^2 / 2 up to u = 2 and linear from there on. `Score` is a float, or several in one register, which is why it is
// passed by reference.
template <class Score>
inline void ContinueRow(const Score& before, float gap, const Score& inverseSpacing, float skipped, Score& continued) {
    const Score departure = gap * inverseSpacing - 1.0f;
    const Score u = (departure < 0 ? -departure : departure) * (1.0f / spacingDeviation);
    const Score near = u < 2.0f ? u : u * 0 + 2.0f;
    continued = before - skipped - near * (u - 0.5f * near);
}

// Registers of four scores, one per class.
typedef float FourScores __attribute__((vector_size(4 * sizeof(float))));

// Raises the score `here` of each class to that of the best row that ends `min` to `max` scans earlier and is continued
// to this scan. `before` points to the scores of all classes at this scan, `costs[gap]` is the cost of the peaks in
// between.
template <class Several, std::size_t count>
inline void ContinueBest(std::array<float, count>& here, const std::array<float, count>* before, int min, int max,
                         const std::array<float, count>& inverseSpacings, const float* costs) {
    for (std::size_t k = 0; k < count; k += sizeof(Several) / sizeof(float)) {
        Several best, inverse, from, value;
        std::memcpy(&best, here.data() + k, sizeof best);
        std::memcpy(&inverse, inverseSpacings.data() + k, sizeof inverse);
        for (int gap = min; gap <= max; ++gap) {
            std::memcpy(&from, before[-gap].data() + k, sizeof from);
            ContinueRow(from, static_cast<float>(gap), inverse, costs[gap], value);
            best = best < value ? value : best;
        }
        std::memcpy(here.data() + k, &best, sizeof best);
    }
}
LANECALL_WIDE void ContinueRows(std::array<float, 16>& here, const std::array<float, 16>* before, int min, int max,
                                const std::array<float, 16>& inverseSpacings, const float* costs) {
    ContinueBest<EightFloats>(here, before, min, max, inverseSpacings, costs);
}
void ContinueRows(std::array<float, 4>& here, const std::array<float, 4>* before, int min, int max,
                  const std::array<float, 4>& inverseSpacings, const float* costs) {
    ContinueBest<FourScores>(here, before, min, max, inverseSpacings, costs);
}

template <class Classes>
class CRowSearch {
  public:
    CRowSearch(const Curves& sharp, ScanRange scanRange, const CTrack& track)
        : range(scanRange), spacing(track), tops(TopsOf(sharp, scanRange)), skipping(SkippingCosts(tops)) {
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
    using Changes = std::array<std::uint8_t, classCount>;  // for each class, the class that the best row was in before

    void Search() {
        const int count = range.Length();
        scores.resize(static_cast<std::size_t>(count));
        changes.resize(scores.size());
        for (int i = 0; i < count; ++i)
            Advance(i);
    }

    // Lets a row change to other classes of spacing, at a cost per step.
    static void AllowChange(Scores& here, Changes& from) {
        constexpr auto cost = static_cast<float>(changeCost * Classes::step);
        for (std::size_t k = 0; k < classCount; ++k)
            from[k] = static_cast<std::uint8_t>(k);
        // Upward and downward apart, so that neither waits for the other.
        Scores down = here;
        Changes fromAbove = from;
        const auto pass = [](Scores& best, Changes& origins, std::size_t k, std::size_t neighbour) {
            const float moved = best[neighbour] - cost;
            origins[k] = moved > best[k] ? origins[neighbour] : origins[k];
            best[k] = std::max(best[k], moved);
        };
        for (std::size_t k = 1; k < classCount; ++k) {
            pass(here, from, k, k - 1);
            pass(down, fromAbove, classCount - 1 - k, classCount - k);
        }
        for (std::size_t k = 0; k < classCount; ++k) {
            from[k] = down[k] > here[k] ? fromAbove[k] : from[k];
            here[k] = std::max(here[k], down[k]);
        }
    }

    struct Gaps {
        int min, max;  // in scans, both included; none if max is below min
    };
    Gaps GapsAt(int i, double distance) const {
        return {std::max(1, static_cast<int>(std::ceil(minGap * distance))),
                std::min(i, static_cast<int>(maxGap * distance))};
    }
    static float Start(int i, double distance) {
        return i < 2 * distance ? 0 : impossible;  // the first base is within two spacings of the start
    }
    // The cost of the peaks between a base at scan i and the base `gap` scans before it.
    float CostBetween(int i, int gap, double distance) const {
        constexpr double covered = 0.25;  // spacings: peaks this close to a base are its own and cost nothing
        const int reach = static_cast<int>(covered * distance);
        const int from = i - gap + reach + 1, to = i - reach;
        return from < to ? skipping[static_cast<std::size_t>(to)] - skipping[static_cast<std::size_t>(from)] : 0;
    }

    // Computes the scores of the best rows that end with a base at scan i of the range, one for each class.
    void Advance(int i) {
        const auto at = static_cast<std::size_t>(i);
        const double distance = spacing.At(range.first + i);
        const Scores inverseSpacings = InverseSpacings(distance);
        Scores here;
        here.fill(Start(i, distance));
        const Gaps gaps = GapsAt(i, distance);
        if (gaps.max >= 0) costs.resize(std::max(costs.size(), static_cast<std::size_t>(gaps.max) + 1));
        for (int gap = gaps.min; gap <= gaps.max; ++gap)
            costs[static_cast<std::size_t>(gap)] = CostBetween(i, gap, distance);
        ContinueRows(here, scores.data() + at, gaps.min, gaps.max, inverseSpacings, costs.data());
        const float score = BaseScore(tops.height[at]);
        for (std::size_t k = 0; k < classCount; ++k)
            here[k] += score - departures[k];
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
        for (int gap = gaps.min; gap <= gaps.max; ++gap) {
            float value = 0;
            ContinueRow(scores[static_cast<std::size_t>(i - gap)][k], static_cast<float>(gap), inverseSpacing,
                        CostBetween(i, gap, distance), value);
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
    const std::vector<float> skipping;
    Scores inverseRatios{};        // the given spacing in relation to that of each class
    Scores departures{};           // cost of a base in each class
    std::vector<float> costs;      // of the peaks between the present scan and that many scans before it
    std::vector<Scores> scores;    // of the best row that ends at each scan, for each class
    std::vector<Changes> changes;  // at each scan
    int last = -1;                 // scan of the last base of the best row
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
    constexpr double share = 0.3;  // of the gaps to the neighbours; below a half, so that the order stays
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
