// The plain log of a plate: a stream of texts without structure of its own.
#include "platform/Console.h"
#include "run/Plate.h"

void CPlate::Log(const std::string& text) {
    if (logFile.Open(scan.folder + "\\basecall.log", platform::OpenMode::CreateOrKeep) != 0) return;
    // Closed after every text, so that all of it is there for other programs during a run and after a crash.
    if (logFile.SeekFromEnd(0) == 0) logFile.Write(text);
    logFile.Close();
    platform::Print(text);
}
