// SPDX-License-Identifier: MIT
// CPlate: adding entries to the mark-up log.
#include <new>
#include <string_view>
#include <utility>

#include "platform/Ascii.h"
#include "platform/Console.h"
#include "platform/Error.h"
#include "records/HtmlFile.h"
#include "records/PlateRecords.h"
#include "run/InputSamples.h"
#include "run/Plate.h"

namespace {

// True when reading the log back gives the path exactly as it was written. Otherwise the log is read again next time.
bool ReadsBackUnchanged(std::string_view path) {
    return !path.empty() && path.find_first_of("<\t\n\v\f\r") == std::string_view::npos &&
           platform::Trim(path, " ").size() == path.size();
}

}  // namespace

void CPlate::AddToMarkupLog(const std::string& path, std::int32_t section) try {
    const std::string logPath = scan.folder + "\\log.xml";
    const auto warn = [&](std::string_view reason) {
        if (!records->hasWarnedOfMarkup) platform::Warn({path, " cannot be entered in ", logPath, ": ", reason});
        records->hasWarnedOfMarkup = true;
    };
    // Moved out of the records, and back only if everything succeeds; otherwise the next entry reads the file again.
    std::unique_ptr<CHtmlFile> log = std::move(records->markup);
    if (!log) {
        // Checked before a file is made.
        if (InputSamples().IsWriteForbidden(logPath)) return warn("it is or leads to the place of a sample file");
        log = std::make_unique<CHtmlFile>();
    }
    if (const platform::Error error = log->Open(logPath)) return warn(error.Text());
    if (!log->IsOwn() &&
        (InputSamples().IsWriteForbidden(logPath) || InputSamples().IsReplaceForbidden(log->FormerPath())))
        return warn("it or its former state is a sample file");
    if (section < 0 || section >= std::ssize(log->sections))
        return warn(log->readError ? log->readError.Text() : "there is no such section");
    log->sections[static_cast<std::size_t>(section)].entries.Add(path);
    log->WriteSections();
    log->Close();
    if (ReadsBackUnchanged(path)) records->markup = std::move(log);
} catch (const std::bad_alloc&) {
    platform::Warn({path, " cannot be entered in log.xml of ", scan.folder, ": there is not enough memory"});
}
