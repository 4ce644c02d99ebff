// The plain log of a plate: a stream of texts without structure of its own.
#include <tuple>

#include "platform/Console.h"
#include "run/Plate.h"

void CPlate::Log(const std::string& text) {
    if (logFile.Open(scan.folder + "\\basecall.log", platform::OpenMode::CreateOrKeep)) return;
    if (!logFile.SeekFromEnd(0)) std::ignore = logFile.Write(text);
    // Closed after every text, so that all of it is there for other programs during a run and after a crash.
    logFile.CloseQuietly();
    platform::Print(text);
}
