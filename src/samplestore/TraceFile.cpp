#include "samplestore/TraceFile.h"

#include <utility>

CTraceFile::CTraceFile(std::string filePath, CSampleFile* owner, bool processed, CBaseCaller* caller)
    : path(std::move(filePath)), sample(owner) {
    const CRuntimeClass& kind = processed ? CProcessedTrace::runtimeClass : CRawTrace::runtimeClass;
    trace.reset(static_cast<CCapTrace*>(kind.create().release()));
    if (CProcessedTrace* made = Processed()) made->SetCallerInfo(caller);
}

CTraceFile::~CTraceFile() {
    if (trace) trace->FreeArrays();
}
