// A trace with the path of its file and its sample.
#pragma once

#include <memory>
#include <string>

#include "samplestore/CapTrace.h"

class CBaseCaller;
class CSampleFile;

class CTraceFile {
  public:
    std::string path;                  // full path of the file
    std::unique_ptr<CCapTrace> trace;  // a CRawTrace or a CProcessedTrace, never null
    CSampleFile* sample = nullptr;     // not owned

    // Makes an empty trace of the class that `processed` asks for; a processed one remembers `caller` (may be null).
    CTraceFile(std::string path, CSampleFile* sample, bool processed, CBaseCaller* caller);
    CTraceFile(const CTraceFile&) = delete;
    CTraceFile& operator=(const CTraceFile&) = delete;
    ~CTraceFile();

    // The trace when it is a processed one, else null.
    CProcessedTrace* Processed() const { return KindCast<CProcessedTrace>(trace.get()); }
};
