#include "export/Formats.h"

#include "run/Plate.h"

void Exported(const CSampleFile& sample, Format format, const std::string& path) {
    const CFormat& row = formats.at(static_cast<std::size_t>(format));
    if (row.done) sample.plate->Log(FormatMessage(*row.done, {path}));
    sample.plate->AddToMarkupLog(path, SectionOf(format));
}
