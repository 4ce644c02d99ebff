// SPDX-License-Identifier: MIT
// CPlate: the plain log, a sequence of texts without any structure.
#include <string_view>

#include "platform/Console.h"
#include "platform/Error.h"
#include "records/PlateRecords.h"
#include "run/InputSamples.h"
#include "run/Plate.h"

namespace {

// Warns once per plate.
void WarnOfLoss(bool& hasWarned, const std::string& path, std::string_view reason) {
    if (!hasWarned) platform::Warn({path, " cannot be written: ", reason});
    hasWarned = true;
}

// Closes the log also when memory runs out.
struct CloseAtExit {
    platform::AppendFile& file;
    ~CloseAtExit() { file.CloseQuietly(); }
};

}  // namespace

void CPlate::Log(const std::string& text) {
    const std::string path = scan.folder + "\\basecall.log";
    constexpr std::string_view isSample = "it is or leads to the place of a sample file";
    // Checked before a file is made, and again whenever another file has the name.
    if (records->log == platform::FileIdentity{} && InputSamples().IsWriteForbidden(path))
        return WarnOfLoss(records->hasWarnedOfLog, path, isSample);
    if (const platform::Error error = logFile.Open(path))
        return WarnOfLoss(records->hasWarnedOfLog, path, error.Text());
    const CloseAtExit closeAtExit{logFile};
    if (logFile.Identity() != records->log && InputSamples().IsWriteForbidden(path))
        return WarnOfLoss(records->hasWarnedOfLog, path, isSample);
    records->log = logFile.Identity();
    const platform::Error added = logFile.Append(text);
    // Closed after every text, so that other programs can read all of it during a run and after a crash.
    const platform::Error closed = logFile.Close();
    if (added || closed) WarnOfLoss(records->hasWarnedOfLog, path, (added ? added : closed).Text());
    platform::Print(text);
}
