/* SPDX-License-Identifier: MIT */
/* The interface between Lanewright and a base-caller library.
 *
 * A base caller is a shared library that exports the functions declared here, undecorated and under exactly these
 * names. Note the unusual spelling of three of them ("GetBaseCallerCod", "SetApproxiamtePeakWidth",
 * "ReportSpecSeparatnMatrixUsed"). docs/library-interface.md describes the whole conversation and shows a complete
 * small library.
 *
 * The header can be used from C (C99 and later) and C++. Texts are 8-bit and NUL-terminated. Everything that
 * a library returns remains its property and must stay valid until CleanUp; the program copies what it keeps.
 * The argument `sample` is always 0: the library gets one sample at a time.
 */
#ifndef LANEWRIGHT_BASECALLER_H
#define LANEWRIGHT_BASECALLER_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One peak of a called base. Only `position` is read; the other words are copied without being interpreted. */
typedef struct PeakRecord {
    uint32_t words0to3[4];
    float position; /* scan number in the raw trace */
    uint32_t words5to9[5];
} PeakRecord;

/* One called base. */
typedef struct BaseRecord {
    char letter;
    int32_t peakCount;  /* number of entries of `peaks`, at least 1 */
    float quality;      /* a fraction: 1.0 is 100 percent */
    PeakRecord* peaks;  /* the first one gives the position of the base */
    float strengths[4]; /* relative signal of channels 1 to 4 at this base */
    int32_t descriptor; /* 2 excludes the base from every sequence output */
} BaseRecord;

/* The layout is part of the interface: with 4-byte pointers BaseRecord has 36 bytes and PeakRecord 40; otherwise
 * the members have their natural alignment. */
#ifdef __cplusplus
static_assert(sizeof(PeakRecord) == 40 && offsetof(PeakRecord, position) == 16, "PeakRecord layout");
static_assert(sizeof(void*) != 4 || sizeof(BaseRecord) == 36, "BaseRecord layout");
static_assert(sizeof(void*) != 8 || (sizeof(BaseRecord) == 48 && offsetof(BaseRecord, peaks) == 16),
              "BaseRecord layout");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(PeakRecord) == 40 && offsetof(PeakRecord, position) == 16, "PeakRecord layout");
_Static_assert(sizeof(void*) != 4 || sizeof(BaseRecord) == 36, "BaseRecord layout");
_Static_assert(sizeof(void*) != 8 || (sizeof(BaseRecord) == 48 && offsetof(BaseRecord, peaks) == 16),
               "BaseRecord layout");
#endif

/* --- About the library ------------------------------------------------------------------------------- */

/* Code that goes into the name of the output folder. Optional; without it the code is "N". */
const char* GetBaseCallerCod(void);
/* Number of procedures offered, of which at most numbers 0 to 5 are run. Optional; without it the number is 1. */
int32_t GetNumOfProcedures(void);
/* Name of the algorithm. For "QXBaseCaller", in any letter case, the program calls SetSignalRange. Needed. */
const char* GetProgramName(void);

/* --- Set-up of one conversation ---------------------------------------------------------------------- */

/* Turns annotation on; `flag` is always 1. Optional; without it annotation stays off. */
void SetIfAnnotate(int32_t flag);
/* Number of samples to come, always 1. Starts every conversation; of the set-up functions only SetIfAnnotate is called
 * before it. Needed. */
void SetNumSamples(int32_t count);
/* The raw trace: `channels` (4) arrays of `scans` values and a fifth one with the current, valid until CleanUp;
 * `rate` in scans per second; `baseOrder` has the letters of channels 1 to 4, then "N". Needed. */
void SetRawData(int32_t sample, double** arrays, int32_t channels, int32_t scans, float rate, const char* baseOrder);
/* Range of the signal in raw scans; for a short run `first` may be greater than `last`. Needed if the program has to
 * call it: see GetProgramName. */
void SetSignalRange(int32_t sample, int32_t first, int32_t last);
/* Approximate peak width in scans; -1 (the only value passed) leaves it to the library. Needed. */
void SetApproxiamtePeakWidth(int32_t sample, int32_t width);
/* Spectral separation matrix: 4 rows of 4, rows and columns in the base order A, C, T, G. Needed. */
void SetSpecSepMatrix(int32_t sample, float** rows);

/* --- Work ---------------------------------------------------------------------------------------------- */

/* Runs one procedure; `zero` is always 0. Returns non-zero on success. Needed. */
int32_t ExecuteProcedure(int32_t sample, int32_t procedure, int32_t zero);
/* Returns the reason why the last procedure failed, or null; the two values are not read. Optional. */
const char* ReportProblem(int32_t sample, int32_t* number, double* value);

/* --- Results ------------------------------------------------------------------------------------------- */

/* Returns 4 processed channels, indexed by raw scan number, valid from `first` up to but not including `end`.
 * `scratch` is not read. Needed. */
double** PeekProcessedTrace(int32_t sample, int32_t* scratch, int32_t* first, int32_t* end);
/* Returns the `count` called bases; `firstGood` and `lastGood` are the indices of the first and last base of the
 * good region (a negative `firstGood` means all bases); `overall` is the quality as a fraction. Needed. */
BaseRecord* ReportSequence(int32_t sample, int32_t* count, int32_t* firstGood, int32_t* lastGood, float* overall);
/* Returns the matrix that was used, in the form of SetSpecSepMatrix, or null. Needed. */
float** ReportSpecSeparatnMatrixUsed(int32_t sample);
/* Signal range that was found in the raw data, in scans. Optional. */
void ReportSignalRangeForRawData(int32_t sample, int32_t* start, int32_t* end);

/* --- Annotation; all optional, called only if it was turned on ------------------------------------------- */

/* Returns the number of zones; `zones` has two values per zone (start, end), `values` eight (signal and noise of
 * channel 1, then of channels 2 to 4). */
int32_t ReportSignalToNoise(int32_t sample, int32_t** zones, int32_t** values);
/* Returns the number of measurements; the arrays have the peak width at half maximum, gap and position of each. */
int32_t ReportFWHMSpacing(int32_t sample, float** fwhm, int32_t** gaps, int32_t** positions);
/* Returns the number of areas in which the current was corrected. */
int32_t ReportNumCurrFix(int32_t sample);
/* Returns the depth of the spectral separation. */
int32_t ReportSpecSepDepth(int32_t sample);
/* Quality of the spectral separation: overall, and of channels 1 to 4 (`channels` has room for 4 values). */
void ReportSpecSepQual(int32_t sample, float* overall, float* channels);
/* True start and stop of the raw data, in scans; both are 0 before the call. */
void ReportTrueStartStopPoints(int32_t sample, int32_t* start, int32_t* stop);

/* Ends the work on a sample. Also called before the library is released, so it can be called twice in a row. Needed. */
void CleanUp(void);

#ifdef __cplusplus
}
#endif

#endif
