// SPDX-License-Identifier: MIT
// Answers as its script sets and notes the calls that it gets. BARE lacks what is optional, LACKING what is needed.
#include <algorithm>
#include <sstream>
#include <tuple>

#include "Script.h"

extern "C" Script script;
Script script;
static double** given;  // the raw trace

template <class... Values>
static void Note(const char* name, const std::tuple<Values...>& values) {
    std::ostringstream text;
    std::apply([&](const auto&... value) { ((text << ' ' << value), ...); }, values);
    script.calls += name + text.str() + "; ";
}

// An entry point that notes some values and gives a result.
#define ENTRY(type, name, parameters, noted, result) \
    type name parameters {                           \
        Note(#name, std::tuple noted);               \
        return static_cast<type>(result);            \
    }

using Int = int32_t;
#ifndef BARE
ENTRY(const char*, GetBaseCallerCod, (), (), "Scr")
ENTRY(Int, GetNumOfProcedures, (), (), script.procedures)
ENTRY(void, SetIfAnnotate, (Int flag), (flag), 0)
ENTRY(void, SetSignalRange, (Int, Int first, Int last), (first, last), 0)
ENTRY(const char*, ReportProblem, (Int sample, Int*, double*), (sample), script.problem.c_str())
ENTRY(void, ReportSignalRangeForRawData, (Int, Int* a, Int* b), (), (*a = 11, *b = 12))
#endif
#ifndef LACKING
ENTRY(BaseRecord*, ReportSequence, (Int, Int* count, Int* a, Int* b, float* overall), (),
      (*count = script.count, *a = script.firstGood, *b = script.lastGood, *overall = 0.875f, script.bases.data()))
#endif
ENTRY(void, SetNumSamples, (Int count), (count), 0)
ENTRY(const char*, GetProgramName, (), (), script.program)
ENTRY(void, SetRawData, (Int, double** raw, Int channels, Int n, float rate, const char* order),
      (channels, n, rate, order, raw[0][0], raw[2][n - 1], raw[4][n - 1]), given = raw)
ENTRY(void, SetApproxiamtePeakWidth, (Int sample, Int width), (sample, width), 0)
ENTRY(void, SetSpecSepMatrix, (Int, float** rows), (rows[0][0], rows[3][2]), 0)
ENTRY(Int, ExecuteProcedure, (Int sample, Int i, Int zero), (sample, i, zero), i != script.failing)
ENTRY(double**, PeekProcessedTrace, (Int, Int*, Int* a, Int* b), (),
      (*a = script.start, *b = script.end, script.curves ? script.curves : given))
ENTRY(float**, ReportSpecSeparatnMatrixUsed, (Int), (), script.rows)
ENTRY(Int, ReportSignalToNoise, (Int, Int** a, Int** b), (), (*a = script.zones, *b = sixteen, script.measured))
ENTRY(Int, ReportFWHMSpacing, (Int, float** a, Int** b, Int** c), (),
      (*a = script.fwhm.data(), *b = script.zones, *c = sixteen + 2, script.measured))
ENTRY(Int, ReportNumCurrFix, (Int), (), 5)
ENTRY(Int, ReportSpecSepDepth, (Int), (), 6)
ENTRY(void, ReportSpecSepQual, (Int, float* overall, float* channels), (), std::fill_n(channels, 4, *overall = 0.25f))
ENTRY(void, ReportTrueStartStopPoints, (Int, Int* a, Int* b), (), (*a += 13, *b += 14))
// Nothing that was reported may be read any more.
ENTRY(void, CleanUp, (), (),
      (script.problem.clear(), script.bases.assign(script.bases.size(), {}), script.fwhm = {0},
       script.breaksOff ? throw 1 : 0))
