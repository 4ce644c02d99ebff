// SPDX-License-Identifier: MIT
// The entry points of the library. They hold the sample of the current conversation and the arrays that the program
// reads; CCaller does the work. No exception leaves an entry point.
#include <lanewright/basecaller.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lanecall/Annotation.h"
#include "lanecall/Caller.h"
#include "lanecall/Curves.h"
#include "lanecall/Quality.h"

#define LANECALL_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using lanecall::CCaller;
using lanecall::channelCount;

struct Conversation {
    CCaller caller;
    std::string failure;    // why a procedure ended by an exception; CCaller::Problem has the other reasons
    bool isBroken = false;  // an entry point failed, so some of the input may be missing

    std::array<double*, channelCount> channels{};
    std::vector<PeakRecord> peaks;
    std::vector<BaseRecord> bases;
    std::array<std::array<float, 4>, 4> matrix{};
    std::array<float*, 4> matrixRows{};
};

std::unique_ptr<Conversation> conversation;
bool annotationAsked = false;  // before the conversation that it is for begins

// Returns what `work` returns for the conversation, or `otherwise` if there is none or `work` throws. After an
// exception every later procedure fails: calls from half of the input could look like good ones.
template <class Result, class Work>
Result Guarded(Result otherwise, Work work) noexcept {
    try {
        if (conversation) return work(*conversation);
    } catch (...) {
        conversation->isBroken = true;
    }
    return otherwise;
}

void FillBases(Conversation& talk) {
    const auto& calls = talk.caller.Calls();
    const auto& qualities = talk.caller.Qualities();
    talk.peaks.assign(calls.size(), PeakRecord{});
    talk.bases.assign(calls.size(), BaseRecord{});
    for (std::size_t i = 0; i < calls.size(); ++i) {
        talk.peaks[i].position = static_cast<float>(calls[i].scan);
        BaseRecord& base = talk.bases[i];
        base.letter = talk.caller.LetterOf(calls[i].channel);
        base.peakCount = 1;
        base.quality = static_cast<float>(qualities[i]);
        base.peaks = &talk.peaks[i];
        const lanecall::PerChannel& heights = talk.caller.Heights()[i];
        const double tallest = *std::max_element(heights.begin(), heights.end());
        for (std::size_t c = 0; c < channelCount; ++c)
            base.strengths[c] = tallest > 0 ? static_cast<float>(heights[c] / tallest) : 0;
    }
}

}  // namespace

LANECALL_EXPORT const char* GetBaseCallerCod(void) {
    return "LC1";
}

LANECALL_EXPORT int32_t GetNumOfProcedures(void) {
    return lanecall::procedureCount;
}

LANECALL_EXPORT const char* GetProgramName(void) {
    return "Lanecall";
}

LANECALL_EXPORT void SetIfAnnotate(int32_t flag) {
    annotationAsked = flag != 0;
}

LANECALL_EXPORT void SetNumSamples(int32_t) {
    conversation.reset();
    try {
        conversation = std::make_unique<Conversation>();
        if (std::exchange(annotationAsked, false)) conversation->caller.TurnAnnotationOn();
    } catch (...) {
        // Without a conversation every procedure fails.
    }
}

LANECALL_EXPORT void SetRawData(int32_t, double** arrays, int32_t channels, int32_t scans, float,
                                const char* baseOrder) {
    Guarded(0, [&](Conversation& talk) {
        talk.caller.TakeTrace(arrays, channels, scans, baseOrder);
        return 1;
    });
}

LANECALL_EXPORT void SetSignalRange(int32_t, int32_t first, int32_t last) {
    Guarded(0, [&](Conversation& talk) {
        talk.caller.TakeRange(first, last);
        return 1;
    });
}

// Ignored: the peak width is measured on the trace.
LANECALL_EXPORT void SetApproxiamtePeakWidth(int32_t, int32_t) {}

LANECALL_EXPORT void SetSpecSepMatrix(int32_t, float** rows) {
    Guarded(0, [&](Conversation& talk) {
        talk.caller.TakeMatrix(rows);
        return 1;
    });
}

LANECALL_EXPORT int32_t ExecuteProcedure(int32_t, int32_t procedure, int32_t) {
    return Guarded(0, [&](Conversation& talk) {
        talk.failure = "The base caller ran out of memory";
        if (talk.isBroken) return 0;
        const bool ok = talk.caller.Run(procedure);
        // Here and not in ReportSequence, which cannot report that the memory is not there: no bases would look like an
        // answer.
        if (ok && procedure == lanecall::procedureCount - 1) FillBases(talk);
        talk.failure.clear();
        return ok ? 1 : 0;
    });
}

LANECALL_EXPORT const char* ReportProblem(int32_t, int32_t*, double*) {
    const char* none = "No sample was handed over";
    return Guarded(none, [&](Conversation& talk) {
        return talk.failure.empty() ? talk.caller.Problem().c_str() : talk.failure.c_str();
    });
}

LANECALL_EXPORT double** PeekProcessedTrace(int32_t, int32_t*, int32_t* first, int32_t* end) {
    *first = *end = 0;
    return Guarded<double**>(nullptr, [&](Conversation& talk) {
        for (std::size_t c = 0; c < channelCount; ++c)
            talk.channels[c] = talk.caller.Processed()[c].data();
        *first = talk.caller.Range().first;
        *end = talk.caller.Range().end;
        return talk.channels.data();
    });
}

LANECALL_EXPORT BaseRecord* ReportSequence(int32_t, int32_t* count, int32_t* firstGood, int32_t* lastGood,
                                           float* overall) {
    *count = *firstGood = *lastGood = 0;
    *overall = 0;
    return Guarded<BaseRecord*>(nullptr, [&](Conversation& talk) {
        *count = static_cast<int32_t>(talk.bases.size());
        *firstGood = talk.caller.Good().first;
        *lastGood = talk.caller.Good().last;
        *overall = static_cast<float>(talk.caller.Overall());
        return talk.bases.data();
    });
}

LANECALL_EXPORT float** ReportSpecSeparatnMatrixUsed(int32_t) {
    return Guarded<float**>(nullptr, [](Conversation& talk) -> float** {
        if (!talk.caller.MatrixUsed()) return nullptr;
        for (std::size_t r = 0; r < 4; ++r) {
            for (std::size_t c = 0; c < 4; ++c)
                talk.matrix[r][c] = static_cast<float>((*talk.caller.MatrixUsed())[r][c]);
            talk.matrixRows[r] = talk.matrix[r].data();
        }
        return talk.matrixRows.data();
    });
}

LANECALL_EXPORT void ReportSignalRangeForRawData(int32_t, int32_t* start, int32_t* end) {
    Guarded(0, [&](Conversation& talk) {
        *start = talk.caller.Range().first;
        *end = talk.caller.Range().end;
        return 1;
    });
}

LANECALL_EXPORT int32_t ReportSignalToNoise(int32_t, int32_t** zones, int32_t** values) {
    return Guarded(0, [&](Conversation& talk) {
        lanecall::Annotation& notes = talk.caller.Notes();
        *zones = notes.zones.data();
        *values = notes.zoneValues.data();
        return static_cast<int>(notes.zones.size() / 2);
    });
}

LANECALL_EXPORT int32_t ReportFWHMSpacing(int32_t, float** fwhm, int32_t** gaps, int32_t** positions) {
    return Guarded(0, [&](Conversation& talk) {
        lanecall::Annotation& notes = talk.caller.Notes();
        *fwhm = notes.fwhm.data();
        *gaps = notes.gaps.data();
        *positions = notes.positions.data();
        return static_cast<int>(notes.positions.size());
    });
}

// 0: the current is not corrected.
LANECALL_EXPORT int32_t ReportNumCurrFix(int32_t) {
    return 0;
}

// 1: the whole read has one matrix.
LANECALL_EXPORT int32_t ReportSpecSepDepth(int32_t) {
    return Guarded(0, [](Conversation& talk) { return talk.caller.MatrixUsed() ? 1 : 0; });
}

LANECALL_EXPORT void ReportSpecSepQual(int32_t, float* overall, float* channels) {
    Guarded(0, [&](Conversation& talk) {
        const lanecall::Annotation& notes = talk.caller.Notes();
        *overall = notes.separationQuality;
        for (std::size_t c = 0; c < channelCount; ++c)
            channels[c] = static_cast<float>(notes.separationQualities[c]);
        return 1;
    });
}

LANECALL_EXPORT void ReportTrueStartStopPoints(int32_t, int32_t* start, int32_t* stop) {
    Guarded(0, [&](Conversation& talk) {
        const auto& calls = talk.caller.Calls();
        if (calls.empty()) return 0;
        *start = static_cast<int32_t>(calls.front().scan);
        *stop = static_cast<int32_t>(calls.back().scan);
        return 1;
    });
}

LANECALL_EXPORT void CleanUp(void) {
    conversation.reset();
}
