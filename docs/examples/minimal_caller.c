/* SPDX-License-Identifier: MIT */
/* A complete, very simple base caller: where the highest of the four channels has a peak, it calls the letter of that
 * channel. It does not smooth the curves, separate the dyes or use the spacing of the bases.
 *
 *     cc -std=c11 -Wall -Wextra -Werror -O2 -shared -fPIC -Iinclude -o minimal_caller.so docs/examples/minimal_caller.c
 */
#include <lanewright/basecaller.h>
#include <stdlib.h>
#include <string.h>

enum { channels = 4 };

static double** raw; /* the program's, until CleanUp */
static int32_t scans;
static char letters[channels];
static double* curves[channels];
static BaseRecord* bases;
static PeakRecord* peaks;
static int32_t base_count;

const char* GetBaseCallerCod(void) {
    return "Min";
}

const char* GetProgramName(void) {
    return "MinimalCaller";
}

void SetNumSamples(int32_t count) {
    (void)count; /* always 1 */
}

void SetRawData(int32_t sample, double** arrays, int32_t channel_count, int32_t scan_count, float rate,
                const char* order) {
    (void)sample, (void)channel_count, (void)rate;
    raw = arrays;
    scans = scan_count;
    memcpy(letters, order, sizeof letters);
}

void SetApproxiamtePeakWidth(int32_t sample, int32_t width) {
    (void)sample, (void)width;
}

void SetSpecSepMatrix(int32_t sample, float** rows) {
    (void)sample, (void)rows;
}

static int allocate(void) {
    const size_t count = (size_t)scans + 1;
    for (int k = 0; k < channels; ++k)
        if (!(curves[k] = calloc(count, sizeof **curves))) return 0;
    bases = calloc(count, sizeof *bases);
    peaks = calloc(count, sizeof *peaks);
    return bases && peaks;
}

/* Makes the processed trace: each channel above its lowest value. Returns the highest value of all channels. */
static double lift_baselines(void) {
    double highest = 0;
    for (int k = 0; k < channels; ++k) {
        double lowest = scans > 0 ? raw[k][0] : 0;
        for (int32_t s = 1; s < scans; ++s)
            if (raw[k][s] < lowest) lowest = raw[k][s];
        for (int32_t s = 0; s < scans; ++s) {
            curves[k][s] = raw[k][s] - lowest;
            if (curves[k][s] > highest) highest = curves[k][s];
        }
    }
    return highest;
}

static int tallest_at(int32_t s) {
    int tallest = 0;
    for (int k = 1; k < channels; ++k)
        if (curves[k][s] > curves[tallest][s]) tallest = k;
    return tallest;
}

/* The quality says how clear the peak is: 1 if the other channels are 0, 0 if one of them is as high. */
static void add_base(int channel, int32_t s) {
    BaseRecord* base = &bases[base_count];
    const double height = curves[channel][s];
    double second = 0;
    for (int k = 0; k < channels; ++k) {
        base->strengths[k] = (float)(curves[k][s] / height);
        if (k != channel && curves[k][s] > second) second = curves[k][s];
    }
    base->letter = letters[channel];
    base->quality = (float)(1 - second / height);
    base->peaks = &peaks[base_count];
    base->peakCount = 1;
    base->peaks->position = (float)s;
    ++base_count;
}

int32_t ExecuteProcedure(int32_t sample, int32_t procedure, int32_t zero) {
    (void)sample, (void)procedure, (void)zero;
    base_count = 0;
    if (!allocate()) return 0;
    const double threshold = lift_baselines() / 20;
    for (int32_t s = 1; s + 1 < scans; ++s) {
        const int k = tallest_at(s);
        const double* curve = curves[k];
        if (curve[s] > threshold && curve[s] > curve[s - 1] && curve[s] >= curve[s + 1]) add_base(k, s);
    }
    return 1;
}

const char* ReportProblem(int32_t sample, int32_t* number, double* value) {
    (void)sample, (void)number, (void)value;
    return "Out of memory";
}

double** PeekProcessedTrace(int32_t sample, int32_t* scratch, int32_t* first, int32_t* end) {
    (void)sample, (void)scratch;
    *first = 0;
    *end = scans;
    return curves;
}

BaseRecord* ReportSequence(int32_t sample, int32_t* count, int32_t* first_good, int32_t* last_good, float* overall) {
    (void)sample;
    float sum = 0;
    for (int32_t i = 0; i < base_count; ++i)
        sum += bases[i].quality;
    *count = base_count;
    *first_good = -1; /* all bases count as good */
    *last_good = 0;
    *overall = base_count > 0 ? sum / (float)base_count : 0;
    return bases;
}

float** ReportSpecSeparatnMatrixUsed(int32_t sample) {
    return (void)sample, NULL; /* none was used */
}

/* Called at the end of every conversation, and again before the library is released. */
void CleanUp(void) {
    for (int k = 0; k < channels; ++k) {
        free(curves[k]);
        curves[k] = NULL;
    }
    free(bases);
    bases = NULL;
    free(peaks);
    peaks = NULL;
    base_count = 0;
}
