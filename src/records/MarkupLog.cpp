// Entries of the mark-up log.
#include "records/HtmlFile.h"
#include "run/Plate.h"

void CPlate::AddToMarkupLog(const std::string& path, std::int32_t section) {
    CHtmlFile log(scan.folder + "\\log.xml", platform::OpenMode::CreateOrKeep);
    // A log that cannot be opened or read has no sections: the entry is lost, the log stays as it is.
    if (section < 0 || section >= std::ssize(log.sections)) return;
    log.sections[static_cast<std::size_t>(section)].entries.emplace_back().emplace_back(path);
    log.WriteSections();
}
