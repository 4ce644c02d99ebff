#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Makes a base-caller library of caller.py: build.py [TARGET.so]

Needs Debian's python3-cffi, python3-dev and python3-numpy, and lanewright-dev for the header (CFLAGS names another place
of it: CFLAGS=-I/path/include ./build.py). The library is C code made by cffi that starts Python when the program first
calls into it; caller.py must stay where it is.
"""

import os
import sys
import sysconfig

import cffi

HERE = os.path.dirname(os.path.abspath(__file__))

FUNCTIONS = """
const char* GetBaseCallerCod(void);
const char* GetProgramName(void);
void SetNumSamples(int32_t count);
void SetRawData(int32_t sample, double** arrays, int32_t channels, int32_t scans, float rate, const char* baseOrder);
void SetApproxiamtePeakWidth(int32_t sample, int32_t width);
void SetSpecSepMatrix(int32_t sample, float** rows);
int32_t ExecuteProcedure(int32_t sample, int32_t procedure, int32_t zero);
const char* ReportProblem(int32_t sample, int32_t* number, double* value);
double** PeekProcessedTrace(int32_t sample, int32_t* scratch, int32_t* first, int32_t* end);
BaseRecord* ReportSequence(int32_t sample, int32_t* count, int32_t* firstGood, int32_t* lastGood, float* overall);
float** ReportSpecSeparatnMatrixUsed(int32_t sample);
void CleanUp(void);
"""

RECORDS = """
typedef struct { uint32_t words0to3[4]; float position; uint32_t words5to9[5]; } PeakRecord;
typedef struct { char letter; int32_t peakCount; float quality; PeakRecord* peaks; float strengths[4];
                 int32_t descriptor; } BaseRecord;
"""

# The program loads libraries with local symbols, and with them libpython, whose symbols numpy expects to be global. So
# libpython is opened once more, globally, before Python starts.
GLOBAL_PYTHON = """
#include <dlfcn.h>
#include <lanewright/basecaller.h>

__attribute__((constructor)) static void make_python_global(void) {
    dlopen("%s", RTLD_NOW | RTLD_GLOBAL);
}
"""


def main() -> None:
    target = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else "python_caller.so")
    name = os.path.splitext(os.path.basename(target))[0]
    builder = cffi.FFI()
    builder.cdef(RECORDS)
    builder.embedding_api(FUNCTIONS)
    builder.set_source(name + "_embedded", GLOBAL_PYTHON % sysconfig.get_config_var("INSTSONAME"), libraries=["dl"])
    builder.embedding_init_code(f"""
import sys
sys.path.insert(0, {HERE!r})
from {name}_embedded import ffi
import caller
caller.register(ffi)
""")
    builder.compile(tmpdir=os.path.dirname(target), target=target)


if __name__ == "__main__":
    main()
