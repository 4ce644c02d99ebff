/* The interface between Lanewright and a base-caller library.
 *
 * A base caller is a shared library that exports the functions declared here, undecorated and under
 * exactly these names. Three of the names are spelt in an unusual way ("GetBaseCallerCod",
 * "SetApproxiamtePeakWidth", "ReportSpecSeparatnMatrixUsed"); they are looked up letter by letter.
 * docs/library-interface.md tells the whole conversation and shows a complete small library.
 *
 * The header serves C (C99 and later) and C++. Texts are 8-bit and NUL-terminated. Whatever a library
 * returns stays the library's property; the program copies what it keeps before it calls CleanUp.
 * The argument `sample` is always 0: one sample is handed over at a time.
 */
#ifndef LANEWRIGHT_BASECALLER_H
#define LANEWRIGHT_BASECALLER_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* One peak of a called base. Only `position` is read; the other words are carried along. */
typedef struct PeakRecord {
    uint32_t words0to3[4];
    float position; /* scan number in the raw trace */
    uint32_t words5to9[5];
} PeakRecord;

/* One called base. */
typedef struct BaseRecord {
    char letter;
    int32_t peakCount;  /* number of entries behind `peaks`, at least 1 */
    float quality;      /* a fraction: 1.0 is 100 percent */
    PeakRecord* peaks;  /* the first one gives the base its position */
    float strengths[4]; /* relative signal of channels 1 to 4 at this base */
    int32_t descriptor; /* 2 keeps the base out of every sequence output */
} BaseRecord;

/* The layout is part of the interface: 36 and 40 bytes where pointers have 4 bytes, natural alignment elsewhere. */
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
/* Number of procedures offered; numbers 0 to 5 at the most are run. Optional; without it 1. */
int32_t GetNumOfProcedures(void);
/* Name of the algorithm. "QXBaseCaller", in any letter case, asks for a call of SetSignalRange. Needed. */
const char* GetProgramName(void);

/* --- Set-up of one conversation ---------------------------------------------------------------------- */

/* Turns annotation on; only ever called with 1. Optional; without it no annotation is asked for. */
void SetIfAnnotate(int32_t flag);
/* Number of samples to come: 1. Needed; starts every conversation (only SetIfAnnotate may come before it). */
void SetNumSamples(int32_t count);
/* The raw trace: `channels` (4) arrays of `scans` values and a fifth with the current, valid until CleanUp;
 * `rate` in scans a second; `baseOrder` the letters of channels 1 to 4, then "N". Needed. */
void SetRawData(int32_t sample, double** arrays, int32_t channels, int32_t scans, float rate, const char* baseOrder);
/* Range of the signal in raw scans; `first` may lie above `last` for a short run. Needed when it is called. */
void SetSignalRange(int32_t sample, int32_t first, int32_t last);
/* Peak width in scans; -1 leaves it to the library. Needed. */
void SetApproxiamtePeakWidth(int32_t sample, int32_t width);
/* Spectral separation matrix: 4 rows of 4, rows and columns in the base order A, C, T, G. Needed. */
void SetSpecSepMatrix(int32_t sample, float** rows);

/* --- Work ---------------------------------------------------------------------------------------------- */

/* Runs one procedure; `zero` is 0. Non-zero for success. Needed. */
int32_t ExecuteProcedure(int32_t sample, int32_t procedure, int32_t zero);
/* Why the last procedure failed, in words; the two values are not read. Optional. */
const char* ReportProblem(int32_t sample, int32_t* number, double* value);

/* --- Results ------------------------------------------------------------------------------------------- */

/* 4 processed channels, indexed by raw scan number, valid from `first` up to but not including `end`. Needed. */
double** PeekProcessedTrace(int32_t sample, int32_t* scratch, int32_t* first, int32_t* end);
/* The called bases; good region as indices of the first and last base (a negative first one means all);
 * `overall` quality as a fraction. Needed. */
BaseRecord* ReportSequence(int32_t sample, int32_t* count, int32_t* firstGood, int32_t* lastGood, float* overall);
/* The matrix really used, as SetSpecSepMatrix has it, or null. Needed. */
float** ReportSpecSeparatnMatrixUsed(int32_t sample);
/* Signal range found in the raw data, in scans. Optional. */
void ReportSignalRangeForRawData(int32_t sample, int32_t* start, int32_t* end);

/* --- Annotation; all optional, called only when it was turned on ----------------------------------------- */

/* Number of zones; `zones` two values a zone (start, end), `values` eight (signal and noise of channels 1 to 4). */
int32_t ReportSignalToNoise(int32_t sample, int32_t** zones, int32_t** values);
/* Number of measurements; peak width at half maximum, gap and position of each. */
int32_t ReportFWHMSpacing(int32_t sample, float** fwhm, int32_t** gaps, int32_t** positions);
/* Number of areas in which the current was corrected. */
int32_t ReportNumCurrFix(int32_t sample);
/* Depth of the spectral separation. */
int32_t ReportSpecSepDepth(int32_t sample);
/* Quality of the spectral separation, overall and of channels 1 to 4 (`channels` has room for 4). */
void ReportSpecSepQual(int32_t sample, float* overall, float* channels);
/* True start and stop of the raw data, in scans; both references hold 0 before the call. */
void ReportTrueStartStopPoints(int32_t sample, int32_t* start, int32_t* stop);

/* Ends the work on a sample and precedes every release of the library, so it can come twice in a row. Needed. */
void CleanUp(void);

#ifdef __cplusplus
}
#endif

#endif
