// SPDX-License-Identifier: MIT
// What each stage of Lanecall costs: a read of 600 bases, with noise and dyes that show in the other channels, goes
// from stage to stage. What a stage made is checked by its bases, after the stages that follow.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <string>
#include <utility>

#include "lanecall/Align.h"
#include "lanecall/Measure.h"
#include "lanecall/Prepare.h"
#include "lanecall/ReadBases.h"
#include "lanecall/SeparateDyes.h"
#include "lanecall/Separation.h"
#include "lanecall/SyntheticRead.h"

namespace {

using namespace lanecall;

constexpr std::size_t baseCount = 600;

constexpr Letters channelLetters{'A', 'C', 'T', 'G'};

std::string truth;

Recorded ReadOf600Bases() {
    Recorded recorded;
    truth.clear();
    recorded.curves = SyntheticRead({.bases = static_cast<int>(baseCount),
                                     .drift = 3,
                                     .mixing = {{{1, 0.3, 0, 0}, {0.2, 1, 0.3, 0}, {0, 0.3, 1, 0.2}, {0, 0, 0.2, 1}}},
                                     .baseline = 500,
                                     .noise = 10},
                                    &truth);
    return recorded;
}

const Recorded recorded = ReadOf600Bases();

// The stages by their input. Sharpening and aligning give the same kind of value, so these two have names.
Prepared Next(const Recorded& read) {
    return Prepare(read);
}
Separated Next(Prepared prepared) {
    // Without a matrix the dyes are separated by what the peaks show.
    return SeparateDyes(std::move(prepared), channelLetters, Identity());
}
Measured Next(Separated separated) {
    return Measure(std::move(separated));
}
Sharpened Next(Measured measured) {
    return SharpenPeaks(std::move(measured));
}
Aligned AlignDyes(Sharpened sharpened) {
    return Align(std::move(sharpened), channelLetters);
}

// A stage's result taken through all stages that follow.
CalledRead Finish(CalledRead read) {
    return read;
}
CalledRead FinishAligned(Aligned aligned) {
    return ReadBases(std::move(aligned));
}
CalledRead Finish(Sharpened sharpened) {
    return FinishAligned(AlignDyes(std::move(sharpened)));
}
template <class Input>
CalledRead Finish(Input input) {
    return Finish(Next(std::move(input)));
}

// True when the calls hold the middle of the read as it is.
bool AreRight(const CalledRead& read) {
    std::string letters;
    for (const Call& call : read.calls)
        letters += channelLetters[static_cast<std::size_t>(call.channel)];
    constexpr std::size_t margin = 50;
    return letters.find(truth.substr(margin, baseCount - 2 * margin)) != std::string::npos;
}

// The time of `stage` alone; `rest` takes what it made to the calls, once.
template <class Input, class Stage, class Rest>
void Run(benchmark::State& state, const Input& input, Stage stage, Rest rest) {
    for (auto _ : state) {
        state.PauseTiming();
        Input own = input;
        state.ResumeTiming();
        auto made = stage(std::move(own));
        benchmark::DoNotOptimize(made);
    }
    if (!AreRight(rest(stage(input)))) state.SkipWithError("the calls are wrong");
}

constexpr auto next = [](auto input) { return Next(std::move(input)); };
constexpr auto finish = [](auto made) { return Finish(std::move(made)); };

const Prepared& ThePrepared() {
    static const Prepared value = Next(recorded);
    return value;
}
const Separated& TheSeparated() {
    static const Separated value = Next(ThePrepared());
    return value;
}
const Measured& TheMeasured() {
    static const Measured value = Next(TheSeparated());
    return value;
}
const Sharpened& TheSharpened() {
    static const Sharpened value = Next(TheMeasured());
    return value;
}
const Aligned& TheAligned() {
    static const Aligned value = AlignDyes(TheSharpened());
    return value;
}

void LanecallPrepare(benchmark::State& state) {
    Run(state, recorded, next, finish);
}
void LanecallSeparateDyes(benchmark::State& state) {
    Run(state, ThePrepared(), next, finish);
}
void LanecallMeasure(benchmark::State& state) {
    Run(state, TheSeparated(), next, finish);
}
void LanecallSharpenPeaks(benchmark::State& state) {
    Run(state, TheMeasured(), next, finish);
}
void LanecallAlign(benchmark::State& state) {
    Run(state, TheSharpened(), AlignDyes, FinishAligned);
}
void LanecallReadBases(benchmark::State& state) {
    Run(state, TheAligned(), FinishAligned, finish);
}
BENCHMARK(LanecallPrepare)->Unit(benchmark::kMicrosecond);
BENCHMARK(LanecallSeparateDyes)->Unit(benchmark::kMicrosecond);
BENCHMARK(LanecallMeasure)->Unit(benchmark::kMicrosecond);
BENCHMARK(LanecallSharpenPeaks)->Unit(benchmark::kMicrosecond);
BENCHMARK(LanecallAlign)->Unit(benchmark::kMicrosecond);
BENCHMARK(LanecallReadBases)->Unit(benchmark::kMicrosecond);

}  // namespace
