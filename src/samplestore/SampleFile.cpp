// SPDX-License-Identifier: MIT
// CSampleFile: construction and loading.
#include "samplestore/SampleFile.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <span>
#include <utility>

#include "config/RunSettings.h"
#include "discovery/SplitPath.h"
#include "platform/Ascii.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "samplestore/RsdFile.h"
#include "samplestore/ScanRecord.h"

using platform::Error;

bool HasSampleExtension(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || dot == 0) return false;
    const std::string_view extension = std::string_view(path).substr(dot);
    return platform::EqualIgnoringCase(extension, ".rsd") || platform::EqualIgnoringCase(extension, ".esd");
}

namespace {

SampleKind KindFromSignature(const std::string& path) {
    constexpr std::size_t needed = 11;
    std::array<char, needed> head{};
    std::size_t got = 0;
    platform::File file;
    if (file.Open(path, platform::OpenMode::Read) || file.Read(std::as_writable_bytes(std::span(head)), got) ||
        got < needed)
        return SampleKind::Processed;
    if (std::memcmp(head.data(), "ABIF\0etdir", 10) == 0) return SampleKind::Abif;
    if (std::memcmp(head.data(), ".scf", 4) == 0) return SampleKind::Scf;
    return SampleKind::Processed;
}

// Finds out the kind of the file. A readable sample file stays open in `file`, with its description in `description`,
// so that a load need not read them again. If it is unreadable `error` is the reason.
SampleKind Examine(const std::string& path, CRsdFile& file, CSampleInfo& description, Error& error) {
    if (!HasSampleExtension(path)) return KindFromSignature(path);
    error = file.Open(path, true);
    if (error) {
        platform::ShowBox("cannot read the file");
        return SampleKind::Unreadable;
    }
    error = file.ReadInfo(description);
    if (error) {
        file.CloseQuietly();
        return SampleKind::Unreadable;
    }
    return description.processed ? SampleKind::Processed : SampleKind::Raw;
}

void LogFailure(CPlate& plate, const std::string& message, Error error) {
    plate.Log(message);
    plate.Log(error.Text());
    plate.Log("\r\n");
}

// Reads the scans of an open file into the trace. If their number differs from the one in the description, `mismatch`
// is set and there is no error.
Error ReadTrace(CRsdFile& file, CCapTrace& trace, const CSampleInfo& info, bool& mismatch) {
    std::uint32_t count = 0;
    if (const Error error = file.GetScanCount(count)) return error;
    mismatch = count != info.scanCount;
    if (mismatch) return platform::success;
    try {
        auto scans = std::make_unique_for_overwrite<ScanRecord[]>(count);
        if (const Error error = file.ReadScans({scans.get(), count})) return error;
        trace.scanCount = count;
        trace.TakeScans(std::move(scans), info.analysis);
    } catch (const std::bad_alloc&) {
        trace.scanCount = 0;
        trace.FreeArrays();
        return ENOMEM;
    }
    return platform::success;
}

}  // namespace

CSampleFile::CSampleFile(std::string_view path, CPlate* owner)
    : fileName(LastComponent(std::string(path))), baseOrder("ACTGN0"), plate(owner) {}

CSampleFile::~CSampleFile() = default;

CTraceFile* CSampleFile::CreateProcessedTrace(const std::string& path, std::int32_t processed, CBaseCaller* caller) {
    auto holder = std::make_unique<CTraceFile>(path, this, processed != 0, caller);
    if (processed == 0) {
        rawTrace = std::move(holder);
        return rawTrace.get();
    }
    processedTraces.push_back(std::move(holder));
    return processedTrace = processedTraces.back().get();
}

SampleKind CSampleFile::CheckSampleKind(const std::string& path) const {
    CRsdFile file;
    CSampleInfo description;
    Error error;
    return Examine(path, file, description, error);
}

std::int32_t CSampleFile::LoadProcessed(CTraceFile& holder, std::int32_t readInfo) {
    CRsdFile file;
    CSampleInfo description;
    Error reason;
    const SampleKind kind = Examine(holder.path, file, description, reason);
    if (kind == SampleKind::Abif) return 0;
    if (kind == SampleKind::Unreadable) platform::Warn({holder.path, " cannot be read: ", CRsdFile::Reason(reason)});
    if (kind == SampleKind::Scf || kind == SampleKind::Unreadable) return 1;

    if (file.IsOpen()) {
        if (readInfo) info = std::move(description);
    } else {
        if (const Error error = file.Open(holder.path, true)) {
            LogFailure(*plate, FormatMessage(MessageId::CannotOpenInput, {holder.path}), error);
            return 0;
        }
        if (const Error error = readInfo ? file.ReadInfo(info) : platform::success) {
            constexpr std::string_view text = ". Wrong file format.The file may contain analyzed data";
            LogFailure(*plate, FormatMessage(MessageId::Skipped, {text}), error);
            return 0;
        }
    }

    bool mismatch = false;
    const Error error = ReadTrace(file, *holder.trace, info, mismatch);
    if (error || mismatch) {
        constexpr std::string_view text = ". Wrong file format.The file may be corrupted";
        LogFailure(*plate, FormatMessage(MessageId::Skipped, {text}), error);
        return 0;
    }
    if (CProcessedTrace* processed = holder.Processed()) processed->separationMatrix = info.separationMatrix;
    return 1;
}

bool CSampleFile::LoadStored() {
    const CSampleInfo former = info;
    if (LoadProcessed(*processedTrace, 1) == 0 || !processedTrace->trace->HasChannels()) {
        info = former;
        return false;
    }
    if (!rawTrace->trace->HasChannels()) OrderFromDescription(plate->Settings().baseOrder);
    return true;
}

std::int32_t CSampleFile::Load(const std::string& path, std::int32_t processed) {
    plate->Log(FormatMessage(MessageId::Loading, {fileName, plate->name, platform::LocalTimeText()}));
    CTraceFile* holder = CreateProcessedTrace(path, processed, nullptr);
    if (!LoadProcessed(*holder, 1)) return 0;
    if (info.processed != (processed != 0)) return 0;

    ResolveBaseOrder(plate->Settings().baseOrder);
    NameChemistry();
    plate->Log(FormatMessage(MessageId::UsingBaseOrder, {baseOrder.substr(0, 4).c_str()}));
    return 1;
}
