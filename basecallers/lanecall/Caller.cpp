// SPDX-License-Identifier: MIT
#include "lanecall/Caller.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "lanecall/RawTrace.h"
#include "lanecall/Separation.h"
#include "lanecall/Unreadable.h"

namespace lanecall {

void CCaller::TakeTrace(const double* const* arrays, int channels, int scans, const char* baseOrder) {
    for (std::size_t c = 0; c < channelCount && baseOrder && baseOrder[c] != '\0'; ++c)
        letters[c] = baseOrder[c];
    if (!arrays || channels < channelCount || scans <= 0) return;
    for (int c = 0; c < channelCount; ++c)
        if (!arrays[c]) return;
    if (auto* recorded = std::get_if<Recorded>(&read)) recorded->curves = TakeCurves(arrays, scans);
}

void CCaller::TakeRange(int first, int last) {
    if (auto* recorded = std::get_if<Recorded>(&read))
        recorded->wanted = ScanRange{first, last == INT32_MAX ? last : last + 1};
}

void CCaller::TakeMatrix(const float* const* rows) {
    given = Identity();
    if (!rows) return;
    for (std::size_t r = 0; r < 4; ++r) {
        if (!rows[r]) {
            given = Identity();
            return;
        }
        std::copy_n(rows[r], 4, given[r].begin());
    }
}

bool CCaller::Run(int procedure) {
    if (isOver) return false;  // the first problem stays
    if (procedure != done)
        problem = "Procedure " + std::to_string(procedure) + " was asked for when " + std::to_string(done) + " was due";
    else if (procedure >= procedureCount)
        problem = "There is no procedure " + std::to_string(procedure);
    else
        return Advance();
    return false;
}

bool CCaller::Advance() {
    try {
        read = ResultOf(done);
        ++done;
        return true;
    } catch (const CUnreadable& failure) {
        problem = failure.what();
    } catch (...) {
        read = Recorded{};
        isOver = true;
        throw;
    }
    read = Recorded{};  // the failed stage has moved the curves out of `read`
    isOver = true;
    return false;
}

CCaller::Read CCaller::ResultOf(int procedure) {
    constexpr int measureStep = 200;  // scans between two reported spacings, some 15 bases
    switch (procedure) {
        case 0:
            original = std::get<Recorded>(std::move(read));
            return Prepare(original, part);
        case 1: {
            Separated separated = SeparateDyes(std::move(std::get<Prepared>(read)), letters, given);
            NoteSeparation(separated);
            return separated;
        }
        case 2:
            return Measure(std::move(std::get<Separated>(read)));
        case 3:
            return SharpenPeaks(std::move(std::get<Measured>(read)));
        case 4:
            return Align(std::move(std::get<Sharpened>(read)), letters);
        default: {
            CalledRead called = ReadTheBases();
            if (isAnnotated && notes.positions.empty()) {
                MeasureSpacing(notes, called.range, called.widths, called.spacing, measureStep);
                MeasureSeparation(notes, called.calls, called.curves);
            }
            return called;
        }
    }
}

CalledRead CCaller::ReadTheBases() {
    constexpr double fewTrusted = 0.3;  // of the calls: the signal may be a short read and much else
    constexpr double asGood = 0.95;     // of the trust, with fewer calls around it
    const int length = Range().Length();
    try {
        CalledRead called = ReadBases(std::move(std::get<Aligned>(read)));
        const int trusted = called.good.last - called.good.first + 1;
        if (part == SignalPart::tallest || trusted >= fewTrusted * static_cast<double>(called.calls.size()))
            return called;
        std::optional<CalledRead> other = ReadTallestPart(length, asGood * TrustIn(called.qualities, called.good));
        return other ? std::move(*other) : std::move(called);
    } catch (const CUnreadable&) {
        std::optional<CalledRead> other = part == SignalPart::whole ? ReadTallestPart(length, 0) : std::nullopt;
        if (!other) throw;
        return std::move(*other);
    }
}

// In a run with a wavy baseline the signal is as long as the run, and a read that is a small part of it has little
// influence on the spacing and the heights. So the tallest part is called by itself, if it is clearly shorter than the
// `length` of the whole signal, in scans. None if it is not a read with at least `minTrust`.
std::optional<CalledRead> CCaller::ReadTallestPart(int length, double minTrust) {
    constexpr double maxShare = 0.7;  // beyond this the calls would be those of the whole signal
    CCaller other;
    other.letters = letters;
    other.given = given;
    other.isAnnotated = isAnnotated;
    other.part = SignalPart::tallest;
    other.read = original;
    if (!other.Run(0) || other.Range().Length() > maxShare * length) return std::nullopt;
    for (int procedure = 1; procedure < procedureCount; ++procedure)
        if (!other.Run(procedure)) return std::nullopt;
    if (TrustIn(other.Qualities(), other.Good()) < minTrust) return std::nullopt;
    notes = std::move(other.notes);
    matrixUsed = other.matrixUsed;
    return std::get<CalledRead>(std::move(other.read));
}

void CCaller::NoteSeparation(const Separated& separated) {
    constexpr int zones = 10;  // of the read, each with its own signal and noise in the annotation
    if (isAnnotated) MeasureZones(notes, separated.curves, separated.range, zones);
    const auto indices = BaseIndices(letters);
    if (!indices) return;
    matrixUsed = Identity();
    for (std::size_t r = 0; r < channelCount; ++r)
        for (std::size_t c = 0; c < channelCount; ++c)
            (*matrixUsed)[(*indices)[r]][(*indices)[c]] = separated.matrix[r][c];
}

ScanRange CCaller::Range() const {
    return std::visit(
        [](const auto& stage) -> ScanRange {
            if constexpr (requires { stage.range; }) return stage.range;
            return {};
        },
        read);
}

Curves& CCaller::Processed() {
    return std::visit([](auto& stage) -> Curves& { return stage.curves; }, read);
}

const CalledRead& CCaller::Result() const {
    static const CalledRead none{};
    const auto* called = std::get_if<CalledRead>(&read);
    return called ? *called : none;
}

}  // namespace lanecall
