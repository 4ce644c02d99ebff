// FASTA files: the called sequence of a sample as one record.
//
//   line       content (each ends in CR LF)
//   --------   -------------------------------------------------------------------------------
//   header     ">", path of the processed file, tab, number of letters, tab, "Quillion"
//   sequence   50 letters a line
//   last       the letters that remain; written even when there are none, so it may be empty
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "export/ExportBases.h"
#include "export/Formats.h"
#include "platform/AtomicFile.h"
#include "platform/Files.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "samplestore/SampleFile.h"

namespace {

std::string FastaRecord(const CSampleFile& sample, const CTraceFile& holder, const CProcessedTrace& trace,
                        bool goodRegionOnly) {
    const std::vector<std::int32_t> bases = ExportBases(trace, goodRegionOnly);
    return '>' + holder.path + '\t' + std::to_string(bases.size()) + "\tQuillion\r\n" +
           SequenceLines(sample, trace, bases, "\r\n");
}

// Both write a record and give the message of a failure, if there is one.

// Adds it to a common file, whole or not at all.
std::optional<MessageId> AppendRecord(const std::string& path, const std::string& record) {
    platform::File file;
    if (file.Open(path, platform::OpenMode::CreateOrKeep)) return MessageId::CannotOpenForWriting;
    std::int64_t end = 0;
    if (file.Length(end) || file.SeekSet(end)) return MessageId::WriteFailed;
    if (file.Write(record)) {
        std::ignore = file.Truncate(end);
        return MessageId::WriteFailed;
    }
    if (file.Close()) return MessageId::WriteFailed;
    return std::nullopt;
}

// Makes it the sample's own file.
std::optional<MessageId> WriteRecord(const std::string& path, const std::string& record) {
    platform::AtomicFile file;
    if (file.Open(path)) return MessageId::CannotOpenForWriting;
    file.Write(record);
    if (file.Commit()) return MessageId::WriteFailed;
    return std::nullopt;
}

}  // namespace

std::int32_t CSampleFile::ExportFasta(CTraceFile* processed, const std::string& filePath, std::int32_t goodRegionOnly) {
    const CProcessedTrace* trace = processed ? processed->Processed() : nullptr;
    if (!trace) return 0;
    const CSampleFile& owner = processed->sample ? *processed->sample : *this;
    if (!owner.info.analysis.basecallError.empty()) return 0;

    const bool common = !filePath.empty();
    const std::string path = common ? filePath : ExportPath(plate->outputFolder + "\\" + fileName, "seq");
    if (path.empty()) return 0;
    const std::string record = FastaRecord(*this, *processed, *trace, goodRegionOnly != 0);
    if (const auto failure = common ? AppendRecord(path, record) : WriteRecord(path, record)) {
        plate->Log(FormatMessage(*failure, {path}));
        return 0;
    }
    Exported(*this, Format::Fasta, path);
    return 1;
}
