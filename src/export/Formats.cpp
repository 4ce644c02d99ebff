// SPDX-License-Identifier: MIT
#include "export/Formats.h"

#include "platform/Console.h"
#include "run/InputSamples.h"
#include "run/Plate.h"
#include "run/RunDriver.h"

bool IsTargetFree(const CSampleFile& sample, const std::string& path) {
    if (!sample.plate->InputSamples().IsReplaceForbidden(path)) return true;
    platform::Warn({path, " is a sample file and is not replaced"});
    return false;
}

void RecordOutput(const CSampleFile& sample, Format format, const std::string& path, bool isWritten) {
    const CFormat& row = formats.at(static_cast<std::size_t>(format));
    CRunDriver* const driver = sample.plate->driver;
    if (isWritten && driver && path.starts_with(driver->outputFolder)) driver->hasOutput = true;
    if (row.done) sample.plate->Log(FormatMessage(*row.done, {path}));
    sample.plate->AddToMarkupLog(path, SectionOf(format));
}
