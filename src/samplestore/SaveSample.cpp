// SPDX-License-Identifier: MIT
// CSampleFile: storing a base call in a new file, which is an updated copy of the raw one.
#include <cerrno>
#include <utility>

#include "export/Formats.h"
#include "platform/AtomicFile.h"
#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/RsdFile.h"
#include "samplestore/SampleFile.h"
#include "samplestore/ScanRecord.h"

namespace {

constexpr std::int32_t lastProcedure = 5;

// A folder under the file's name counts too, since it can never be replaced by a file.
bool IsAccessDenied(platform::Error error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EISDIR;
}

platform::Error CheckTrailer(const std::string& path) {
    CRsdFile file;
    if (const platform::Error error = file.Open(path, true)) return error;
    return file.ReadTrailer();
}

// The output file: a copy of the raw file. It is changed under a temporary name and renamed when complete, so a crash
// never leaves a partial file that a later run would take for stored calls. Reports or logs its own failures.
class CSampleCopy {
  public:
    CSampleCopy(const CSampleFile& owner, const std::string& path) : sample(owner), target(path) {}

    // Makes a writable copy of the raw file and opens it as `file`. Fails if the target is the raw file itself. A raw
    // file without a valid trailer is not copied, since the copy could not be read as a sample.
    bool Open() {
        if (!sample.rawTrace) return false;
        if (!IsTargetFree(sample, target)) return false;
        // True also when the target is a link to the raw file.
        if (platform::IsSameFile(sample.rawTrace->path, target)) {
            platform::Warn({target, " is or leads to the raw sample itself and is not replaced"});
            return false;
        }
        if (const platform::Error error = Copy()) {
            if (IsAccessDenied(error))
                sample.plate->driver->Report("Access is denied");
            else
                platform::Warn({target, " cannot be stored: ", CRsdFile::Reason(error)});
            return false;
        }
        if (!file.Open(copy.TemporaryName(), false)) return true;
        sample.plate->Log(FormatMessage(MessageId::CannotOpenForWriting, {target}));
        return false;
    }
    // Stores the description and the scans.
    bool Store(const CSampleInfo& info, std::vector<ScanRecord> scans) {
        return !file.WriteInfo(info) && !file.WriteScans(std::move(scans));
    }
    // Writes the file to the disk and gives it its final name.
    bool Close() {
        if (!file.Close() && !copy.Commit()) return true;
        sample.plate->Log(FormatMessage(MessageId::WriteFailed, {target}));
        return false;
    }

  private:
    platform::Error Copy() {
        const std::string& raw = sample.rawTrace->path;
        if (const platform::Error error = CheckTrailer(raw)) return error;
        if (const platform::Error error = copy.Open(target)) return error;
        if (const platform::Error error = platform::CopyFile(raw, copy.TemporaryName())) return error;
        return platform::SetNormalAttributes(copy.TemporaryName());
    }

    const CSampleFile& sample;
    const std::string target;
    platform::AtomicFile copy;
    CRsdFile file;  // the copy, while it is being changed
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
        info.scanCount = trace->scanCount;
        info.analysis = std::move(analysis);
        info.processed = true;
        if (procedureIndex == lastProcedure && trace->separationMatrix)
            info.separationMatrix = *trace->separationMatrix;
        if (!copy.Store(info, std::move(scans))) return 0;
    }
    if (!copy.Close()) return 0;
    if (trace) RecordOutput(*this, Format::Sample, holder.path);
    return 1;
}

std::int32_t CSampleFile::SaveFailedSample(CTraceFile& holder) {
    holder.path = ExportPath(holder.path, "fsd");
    if (holder.path.empty()) return 0;
    CSampleCopy copy(*this, holder.path);
    if (!copy.Open()) return 0;

    info.analysis.baseCaller = plate->driver->baseCallers->currentCaller->name;
    info.scanCount = 1;
    info.processed = true;
    ScanRecord placeholder{};
    placeholder.words[0] = 1;
    for (int channel = 1; channel <= channelCount; ++channel)
        placeholder.SetFloat(channel, 1.0f);
    if (!copy.Store(info, {placeholder}) || !copy.Close()) return 0;
    RecordOutput(*this, Format::Sample, holder.path);
    return 1;
}
