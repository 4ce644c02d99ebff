// SPDX-License-Identifier: MIT
// What a base-caller library reports about a sample: every number comes from the input. Its arrays are as long as the
// largest counts that are read, and at most one of them is missing.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <lanewright/basecaller.h>
#include "Fuzz.h"
#include "platform/Library.h"
#include "plugins/Conversation.h"
#include "plugins/DyeMatrix.h"
#include "plugins/EntryPoint.h"
#include "plugins/EntryPoints.h"
#include "run/Plate.h"
#include "samplestore/CalledBases.h"
#include "samplestore/CapTrace.h"
#include "samplestore/SampleFile.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

namespace {

constexpr std::int32_t scans = 50;
constexpr std::int32_t maxCount = 32767;

fuzz::CTaker* input = nullptr;
std::array<double, scans + 1000> curve;
std::array<double*, 4> curves;
std::array<PeakRecord, 256> peaks;
std::array<BaseRecord, maxCount + 1> bases;  // one more than the program keeps
std::array<std::int32_t, std::size_t{8} * maxCount> numbers;
std::array<float, maxCount> values;
std::array<float*, 4> rows;

std::int32_t Number() {
    return input->Take<std::int32_t>();
}
// Mostly a small number, sometimes any: small ones lead further into the program.
std::int32_t Small() {
    return input->Take<std::int8_t>() % 4 == 0 ? Number() : input->Take<std::int16_t>();
}
template <class T>
T* Array(T* array) {
    return input->Take<std::uint8_t>() == 7 ? nullptr : array;
}

double** Curves(std::int32_t, std::int32_t*, std::int32_t* first, std::int32_t* end) {
    *first = Small();
    *end = Small();
    for (double*& one : curves)
        one = Array(curve.data());
    return Array(curves.data());
}
BaseRecord* Bases(std::int32_t, std::int32_t* count, std::int32_t* first, std::int32_t* last, float* overall) {
    *count = Small();
    *first = Small();
    *last = Small();
    *overall = input->Take<float>();
    for (std::int32_t i = 0; i < *count && i < 100; ++i) {
        BaseRecord& base = bases[static_cast<std::size_t>(i)];
        base = {input->Take<char>(), Small(), input->Take<float>(), Array(peaks.data()), {}, Small()};
        peaks[0].position = input->Take<float>();
    }
    return Array(bases.data());
}
float** Matrix(std::int32_t) {
    for (float*& row : rows)
        row = Array(values.data());
    return Array(rows.data());
}
std::int32_t Zones(std::int32_t, std::int32_t** zones, std::int32_t** measured) {
    *zones = Array(numbers.data());
    *measured = Array(numbers.data());
    return Small();
}
std::int32_t Spacing(std::int32_t, float** fwhm, std::int32_t** gaps, std::int32_t** positions) {
    *fwhm = Array(values.data());
    *gaps = Array(numbers.data());
    *positions = Array(numbers.data());
    return Small();
}

void Bind(CEntryPoints& library) {
    library.getNumOfProcedures = Small;
    library.setIfAnnotate = library.setNumSamples = [](std::int32_t) {};
    library.setRawData = [](std::int32_t, double**, std::int32_t, std::int32_t, float, const char*) {};
    library.getProgramName = []() -> const char* { return Array("QXBaseCaller"); };
    library.setSignalRange = [](std::int32_t, std::int32_t, std::int32_t) {};
    library.setPeakWidth = [](std::int32_t, std::int32_t) {};
    library.setMatrix = [](std::int32_t, float**) {};
    library.executeProcedure = [](std::int32_t, std::int32_t, std::int32_t) -> std::int32_t {
        return Array("") != nullptr;
    };
    library.reportProblem = [](std::int32_t, std::int32_t*, double*) -> const char* { return Array("no signal"); };
    library.peekProcessedTrace = Curves;
    library.reportSequence = Bases;
    library.reportMatrixUsed = Matrix;
    library.reportSignalRange = library.reportTrueRange = [](std::int32_t, std::int32_t* first, std::int32_t* last) {
        *first = *last = Number();
    };
    library.reportSignalToNoise = Zones;
    library.reportSpacing = Spacing;
    library.reportCurrentFixes = library.reportSeparationDepth = [](std::int32_t) { return Number(); };
    library.reportSeparationQuality = [](std::int32_t, float* overall, float*) { *overall = input->Take<float>(); };
    library.cleanUp = [] {};
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CTaker taker(data, size);
    input = &taker;
    const platform::Library none;
    const std::string name;
    CEntryPoints library(none, name, false);
    Bind(library);
    CRawTrace raw;
    raw.scanCount = scans;
    raw.BuildFromScans(std::vector<ScanRecord>(scans), {});
    CPlate plate("", {}, nullptr);
    CSampleFile sample("x.rsd", &plate);
    CDyeMatrix matrix;
    CProcessedTrace trace;
    CConversation conversation(library, raw);
    const bool isCalled = conversation.SetUp(sample, matrix, Number(), Number(), true) &&
                          conversation.RunProcedures(5) && conversation.TakeCurves(trace) &&
                          conversation.TakeBases(trace.calledBases);
    if (isCalled) {
        conversation.TakeMatrix(trace.separationMatrix);
        conversation.TakeMeasurements(sample.info.analysis);
        std::vector<ScanRecord> stored;
        trace.ToScans(stored, sample.info.analysis);
        const CCalledBases& kept = trace.calledBases;
        fuzz::Demand(stored.size() == trace.scanCount && kept.Count() <= maxCount);
        fuzz::Demand(kept.Count() == 0 ||
                     (kept.goodStart >= 0 && kept.goodLength >= 0 && kept.goodLength <= kept.Count() - kept.goodStart));
    }
    conversation.End();
    return 0;
}
