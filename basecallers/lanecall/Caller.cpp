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
            return Prepare(std::get<Recorded>(read));
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
            CalledRead called = ReadBases(std::move(std::get<Aligned>(read)));
            if (isAnnotated) {
                MeasureSpacing(notes, called.range, called.widths, called.spacing, measureStep);
                MeasureSeparation(notes, called.calls, called.curves);
            }
            return called;
        }
    }
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
