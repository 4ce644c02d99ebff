#include "export/Formats.h"

#include "run/Plate.h"

namespace {

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < formats.size(); ++i)
        if (formats[i].id != static_cast<Format>(i)) return false;
    return formats.back().id == Format::Text;
}
static_assert(IsInOrder(), "one row for each format, in their order");

}  // namespace

void Exported(const CSampleFile& sample, Format format, const std::string& path) {
    const CFormat& row = formats[static_cast<std::size_t>(format)];
    if (row.done) sample.plate->Log(FormatMessage(*row.done, {path}));
    sample.plate->AddToMarkupLog(path, SectionOf(format));
}
