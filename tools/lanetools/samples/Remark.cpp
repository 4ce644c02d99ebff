// SPDX-License-Identifier: MIT
#include "lanetools/samples/Remark.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace lanetools {

namespace {

std::string EarlyEnd(const CCalledPlaces& places, const CRawFigures& figures) {
    constexpr std::size_t maxBases = 300;   // beyond this a read is long enough for most purposes
    constexpr std::size_t minScans = 1000;  // of the run after the end: some 75 more bases
    const std::size_t bases = places.good.start + places.good.length;
    if (bases >= maxBases || figures.scansAfter < minScans) return "";
    return "Signal ends after " + std::to_string(bases) + " bases: short insert or hard stop";
}

std::string LateStart(const CRawFigures& figures) {
    constexpr double lateShare = 0.35;      // of the run
    constexpr std::size_t minScans = 4500;  // before the first good base; usual are 800 to 2,800
    const auto all = static_cast<double>(figures.scansBefore + figures.scansAfter);
    if (figures.scansBefore < minScans || static_cast<double>(figures.scansBefore) < lateShare * all) return "";
    return "Late start: the first good base is at scan " + std::to_string(figures.scansBefore);
}

std::string WeakChannel(const CCalledPlaces& places, const CRawFigures& figures) {
    constexpr double weak = 0.125;  // of the median channel; real dyes differ by up to a factor of 3
    std::array<double, channelCount> sorted = figures.heights;
    std::sort(sorted.begin(), sorted.end());
    if (sorted[0] <= 0 || sorted[0] > weak * 0.5 * (sorted[1] + sorted[2])) return "";
    const auto at = std::find(figures.heights.begin(), figures.heights.end(), sorted[0]) - figures.heights.begin();
    return std::string("Weak channel: ") + places.channels[static_cast<std::size_t>(at)];
}

std::string Saturation(const CRawFigures& figures) {
    constexpr double minPart = 0.01;
    if (figures.saturated < minPart) return "";
    return "Saturated channel: " + std::to_string(std::lround(100 * figures.saturated)) +
           " % of the good region; inject less";
}

}  // namespace

std::string RemarkOn(const CCalledPlaces& places, const CRawFigures& figures) {
    if (!figures.signal) return "";
    std::string remark;
    for (const std::string& one :
         {EarlyEnd(places, figures), LateStart(figures), WeakChannel(places, figures), Saturation(figures)}) {
        if (!remark.empty() && !one.empty()) remark += "; ";
        remark += one;
    }
    return remark;
}

}  // namespace lanetools
