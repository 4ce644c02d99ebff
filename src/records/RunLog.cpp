// The plain log of a plate: a stream of texts without structure of its own.
#include "platform/Console.h"
#include "records/PlateRecords.h"
#include "run/InputSamples.h"
#include "run/Plate.h"

namespace {

// Once for a plate.
void WarnOfLoss(bool& isLost, const std::string& path, std::string_view reason) {
    if (!isLost) platform::Warn({path, " cannot be written: ", reason});
    isLost = true;
}

// Closes the log also when memory gives out.
struct Closing {
    platform::AppendFile& file;
    ~Closing() { file.CloseQuietly(); }
};

}  // namespace

void CPlate::Log(const std::string& text) {
    const std::string path = scan.folder + "\\basecall.log";
    if (const platform::Error error = logFile.Open(path)) return WarnOfLoss(records->isLogLost, path, error.Text());
    const Closing closing{logFile};
    if (logFile.Identity() != records->log && InputSamples().ForbidWriting(path))
        return WarnOfLoss(records->isLogLost, path, "it is a sample file");
    records->log = logFile.Identity();
    const platform::Error added = logFile.Append(text);
    // Closed after every text, so that all of it is there for other programs during a run and after a crash.
    const platform::Error closed = logFile.Close();
    if (added || closed) WarnOfLoss(records->isLogLost, path, (added ? added : closed).Text());
    platform::Print(text);
}
