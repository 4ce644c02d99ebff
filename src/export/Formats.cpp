// SPDX-License-Identifier: MIT
#include "export/Formats.h"

#include "platform/Console.h"
#include "run/InputSamples.h"
#include "run/Plate.h"

bool IsTargetFree(const CSampleFile& sample, const std::string& path) {
    if (!sample.plate->InputSamples().IsReplaceForbidden(path)) return true;
    platform::Warn({path, " is a sample file and is not replaced"});
    return false;
}

void RecordOutput(const CSampleFile& sample, Format format, const std::string& path) {
    const CFormat& row = formats.at(static_cast<std::size_t>(format));
    if (row.done) sample.plate->Log(FormatMessage(*row.done, {path}));
    sample.plate->AddToMarkupLog(path, SectionOf(format));
}
