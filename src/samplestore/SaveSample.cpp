// CSampleFile: storing a base call as a new file, an updated copy of the raw one.
#include <cerrno>

#include "platform/Files.h"
#include "plugins/BaseCallerSet.h"
#include "records/HtmlFile.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/RsdFile.h"
#include "samplestore/SampleFile.h"

namespace {

constexpr std::int32_t highestProcedure = 5;

// A folder in the place of the file counts too: the right to replace it by a file is never given.
bool IsAccessDenied(std::int32_t error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EISDIR;
}

// Makes `target` a writable copy of the raw file and opens it. On failure no target is left, and what must be told has
// been told; the raw file is never touched, also when `target` is the raw file.
bool OpenCopy(const CSampleFile& sample, const std::string& target, CRsdFile& file) {
    if (!sample.rawTrace) return false;
    const std::int32_t copied = platform::CopyFile(sample.rawTrace->path, target);
    if (copied != 0) {
        CRunDriver* driver = sample.plate->driver;
        if (IsAccessDenied(copied) && driver) driver->Report("Access is denied");
        return false;
    }
    if (platform::SetNormalAttributes(target) != 0) {
        platform::DeleteFile(target);
        return false;
    }
    if (file.Open(target, false) != 0) {
        sample.plate->Log(FormatMessage(MessageId::CannotOpenForWriting, {target}));
        platform::DeleteFile(target);
        return false;
    }
    return true;
}

// Stores what is pending. A half-written target is left to the caller, who deletes it.
bool CloseCopy(const CSampleFile& sample, const std::string& target, CRsdFile& file) {
    if (file.Close() == 0) return true;
    sample.plate->Log(FormatMessage(MessageId::WriteFailed, {target}));
    return false;
}

}  // namespace

std::int32_t CSampleFile::SaveProcessedSample(CTraceFile& holder, std::int32_t procedureIndex) {
    CRsdFile file;
    if (!OpenCopy(*this, holder.path, file)) return 0;

    const CProcessedTrace* trace = holder.Processed();
    if (trace) {
        CAnalysisInfo analysis = info.analysis;
        std::vector<ScanRecord> scans;
        trace->ToScans(scans, analysis);
        file.WriteScans(std::move(scans));
        info.scanCount = trace->scanCount;
        info.analysis = std::move(analysis);
        info.processed = true;
        if (procedureIndex == highestProcedure && trace->separationMatrix)
            info.separationMatrix = *trace->separationMatrix;
        file.WriteInfo(info);
    }
    if (!CloseCopy(*this, holder.path, file)) return 0;
    if (trace) plate->AddToMarkupLog(holder.path, markup::processedSection);
    return 1;
}

std::int32_t CSampleFile::SaveFailedSample(CTraceFile& holder) {
    holder.path = ExportPath(holder.path, "fsd");
    if (holder.path.empty()) return 0;
    CRsdFile file;
    if (!OpenCopy(*this, holder.path, file)) return 0;

    const CRunDriver* driver = plate->driver;
    if (driver && driver->baseCallers && driver->baseCallers->currentCaller)
        info.analysis.baseCaller = driver->baseCallers->currentCaller->name;
    info.scanCount = 1;
    info.processed = true;
    file.WriteInfo(info);
    ScanRecord placeholder;
    placeholder.words[0] = 1;
    for (int channel = 1; channel <= channelCount; ++channel)
        placeholder.SetFloat(channel, 1.0f);
    file.WriteScans({placeholder});
    if (!CloseCopy(*this, holder.path, file)) return 0;
    plate->AddToMarkupLog(holder.path, markup::processedSection);
    return 1;
}
