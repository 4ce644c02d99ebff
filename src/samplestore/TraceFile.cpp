// SPDX-License-Identifier: MIT
#include "samplestore/TraceFile.h"

#include <utility>

CTraceFile::CTraceFile(std::string filePath, CSampleFile* owner, bool processed, CBaseCaller* caller)
    : path(std::move(filePath)), sample(owner) {
    const CRuntimeClass& kind = processed ? CProcessedTrace::runtimeClass : CRawTrace::runtimeClass;
    std::unique_ptr<CObject> object = kind.create();
    trace.reset(CastTo<CCapTrace>(object.get()));
    if (trace) static_cast<void>(object.release());
    if (CProcessedTrace* made = Processed()) made->SetCallerInfo(caller);
}

CTraceFile::~CTraceFile() {
    if (trace) trace->FreeArrays();
}
