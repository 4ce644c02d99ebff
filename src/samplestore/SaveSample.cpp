// CSampleFile: storing a base call as a new file, an updated copy of the raw one.
#include <cerrno>

#include "platform/Files.h"
#include "platform/PassingFile.h"
#include "records/HtmlFile.h"
#include "records/Messages.h"
#include "run/RunSettings.h"
#include "samplestore/RsdFile.h"
#include "samplestore/SampleFile.h"

namespace {

constexpr std::int32_t highestProcedure = 5;

// A folder in the place of the file counts too: the right to replace it by a file is never given.
bool IsAccessDenied(std::int32_t error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EISDIR;
}

// The target of a storing: made under a passing name, so that nothing half-made is ever taken for stored calls, be the
// program ended when it may. What must be told of a failure is told here.
class CSampleCopy {
  public:
    CSampleCopy(const CSampleFile& owner, const std::string& path) : sample(owner), target(path) {}

    // Makes a writable copy of the raw file and opens it as `file`. The raw file is never touched, also when it is the
    // target itself.
    bool Open() {
        if (!sample.rawTrace || platform::IsSameFile(sample.rawTrace->path, target)) return false;
        std::int32_t error = passing.Begin(target);
        if (error == 0) error = platform::CopyFile(sample.rawTrace->path, passing.Name());
        if (error != 0) {
            CRunDriver* driver = sample.plate->driver;
            if (IsAccessDenied(error) && driver) driver->Report("Access is denied");
            return false;
        }
        if (platform::SetNormalAttributes(passing.Name()) != 0) return false;
        if (file.Open(passing.Name(), false) == 0) return true;
        sample.plate->Log(FormatMessage(MessageId::CannotOpenForWriting, {target}));
        return false;
    }
    // Stores what is pending and gives the file its name.
    bool Close() {
        if (file.Close() == 0 && passing.Finish() == 0) return true;
        sample.plate->Log(FormatMessage(MessageId::WriteFailed, {target}));
        return false;
    }

  private:
    const CSampleFile& sample;
    const std::string target;
    platform::PassingFile passing;

  public:
    CRsdFile file;  // closed ahead of `passing`, which removes what was not finished
};

}  // namespace

std::int32_t CSampleFile::SaveProcessedSample(CTraceFile& holder, std::int32_t procedureIndex) {
    CSampleCopy copy(*this, holder.path);
    if (!copy.Open()) return 0;

    const CProcessedTrace* trace = holder.Processed();
    if (trace) {
        CAnalysisInfo analysis = info.analysis;
        std::vector<ScanRecord> scans;
        trace->ToScans(scans, analysis);
        copy.file.WriteScans(std::move(scans));
        info.scanCount = trace->scanCount;
        info.analysis = std::move(analysis);
        info.processed = true;
        if (procedureIndex == highestProcedure && trace->separationMatrix)
            info.separationMatrix = *trace->separationMatrix;
        copy.file.WriteInfo(info);
    }
    if (!copy.Close()) return 0;
    if (trace) plate->AddToMarkupLog(holder.path, markup::processedSection);
    return 1;
}

std::int32_t CSampleFile::SaveFailedSample(CTraceFile& holder) {
    holder.path = ExportPath(holder.path, "fsd");
    if (holder.path.empty()) return 0;
    CSampleCopy copy(*this, holder.path);
    if (!copy.Open()) return 0;

    const CBaseCallerSet* settings = RunSettings(*this);
    if (settings && settings->currentCaller) info.analysis.baseCaller = settings->currentCaller->name;
    info.scanCount = 1;
    info.processed = true;
    copy.file.WriteInfo(info);
    ScanRecord placeholder;
    placeholder.words[0] = 1;
    for (int channel = 1; channel <= channelCount; ++channel)
        placeholder.SetFloat(channel, 1.0f);
    copy.file.WriteScans({placeholder});
    if (!copy.Close()) return 0;
    plate->AddToMarkupLog(holder.path, markup::processedSection);
    return 1;
}
