// SPDX-License-Identifier: MIT
// A trace together with the path of its file and the sample that it belongs to.
#pragma once

#include <memory>
#include <string>

#include "samplestore/CapTrace.h"
#include "samplestore/RuntimeClass.h"

class CBaseCaller;
class CSampleFile;

class CTraceFile {
  public:
    std::string path;                  // full path of the file
    std::unique_ptr<CCapTrace> trace;  // a CRawTrace or a CProcessedTrace, never null
    CSampleFile* sample = nullptr;     // not owned

    // Makes an empty trace: a CProcessedTrace with `caller`, which may be null, if `processed`, else a CRawTrace.
    CTraceFile(std::string path, CSampleFile* sample, bool processed, CBaseCaller* caller);
    CTraceFile(const CTraceFile&) = delete;
    CTraceFile& operator=(const CTraceFile&) = delete;
    ~CTraceFile();

    // The trace if it is a processed one, else null.
    CProcessedTrace* Processed() const { return CastTo<CProcessedTrace>(trace.get()); }
};
