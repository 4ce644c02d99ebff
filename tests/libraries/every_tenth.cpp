// SPDX-License-Identifier: MIT
// A simple library: it calls one base every ten scans, A, C, G and T in turn, and gives up on a sample
// whose first channel begins with 13.
#include <lanewright/basecaller.h>

#include <vector>

#ifndef ENTERED
#define ENTERED(entry)
#endif

namespace {

std::vector<std::vector<double>> channels;
std::vector<double*> rows;
std::vector<PeakRecord> peaks;
std::vector<BaseRecord> bases;

}  // namespace

const char* GetBaseCallerCod(void) {
    ENTERED("GetBaseCallerCod");
    return "T10";
}
const char* GetProgramName(void) {
    return "EveryTenth";
}
void SetNumSamples(int32_t) {}
void SetApproxiamtePeakWidth(int32_t, int32_t) {}
void SetSignalRange(int32_t, int32_t, int32_t) {}
void SetSpecSepMatrix(int32_t, float**) {}
float** ReportSpecSeparatnMatrixUsed(int32_t) {
    return nullptr;
}
const char* ReportProblem(int32_t, int32_t*, double*) {
    return "thirteen brings bad luck";
}

void SetRawData(int32_t, double** arrays, int32_t count, int32_t scans, float, const char*) {
    for (int32_t i = 0; i < count; ++i)
        rows.push_back(channels.emplace_back(arrays[i], arrays[i] + scans).data());
    for (int32_t scan = 5; scan < scans; scan += 10)
        peaks.push_back({{}, static_cast<float>(scan), {}});
}
int32_t ExecuteProcedure(int32_t, int32_t, int32_t) {
    ENTERED("ExecuteProcedure");
    return channels[0].empty() || channels[0][0] == 13.0 ? 0 : 1;
}
double** PeekProcessedTrace(int32_t, int32_t*, int32_t* first, int32_t* end) {
    *first = 0;
    *end = static_cast<int32_t>(channels[0].size());
    return rows.data();
}
BaseRecord* ReportSequence(int32_t, int32_t* count, int32_t* firstGood, int32_t* lastGood, float* overall) {
    for (std::size_t i = 0; i < peaks.size(); ++i)
        bases.push_back({"ACGT" [i % 4], 1, 0.5f, &peaks[i], { 1, 0, 0, 0 }, 0});
    *count = static_cast<int32_t>(bases.size());
    *firstGood = 1;
    *lastGood = *count - 1;
    *overall = 0.75f;
    return bases.data();
}
void CleanUp(void) {
    ENTERED("CleanUp");
    channels.clear();
    rows.clear();
    peaks.clear();
    bases.clear();
}
