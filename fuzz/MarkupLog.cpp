// SPDX-License-Identifier: MIT
// A log.xml that another program has written: adds an entry twice.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "export/Formats.h"
#include "records/HtmlFile.h"
#include "records/QXIniFile.h"
#include "run/Plate.h"
#include "support/TempFolder.h"

namespace {

std::size_t CountOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

// Whether no entry of the log can be taken for a tag.
bool IsPlain(const std::string& log) {
    CHtmlFile model;
    model.DefineSections();
    return std::all_of(model.sections.begin(), model.sections.end(),
                       [&](const CIniSection& section) { return CountOf(section.tag, log) == 1; });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto& folder = fuzz::Folder();
    folder.Write("log.xml", fuzz::Text(data, size));
    const std::string added = "out/x.abd\t\t\r\n";
    CPlate plate(folder.Path(), {}, nullptr);
    plate.AddToMarkupLog("out/x.abd", SectionOf(Format::Abd));
    const std::string once = folder.Read("log.xml");
    plate.AddToMarkupLog("out/x.abd", SectionOf(Format::Abd));
    const std::string twice = folder.Read("log.xml");
    fuzz::Demand(CountOf(added, once) >= 1 && CountOf(added, twice) == CountOf(added, once) + 1);

    // After the first entry the log has the program's own form, so the second one adds a line and changes nothing else.
    bool isAdded = !IsPlain(once);
    for (std::size_t at = once.find(added); at != std::string::npos && !isAdded; at = once.find(added, at + 1))
        isAdded = twice == std::string(once).insert(at, added);
    fuzz::Demand(isAdded);
    return 0;
}
