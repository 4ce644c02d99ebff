// SPDX-License-Identifier: MIT
// FASTA files: the called sequence of a sample as one record.
//
//   line       content (each ends in CR LF)
//   --------   -------------------------------------------------------------------------------
//   header     ">", path of the processed file, tab, number of letters, tab, "Quillion"
//   sequence   50 letters a line
//   last       the remaining letters; written even if there are none, so it may be empty
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "export/ExportBases.h"
#include "export/Formats.h"
#include "platform/AppendFile.h"
#include "platform/AtomicFile.h"
#include "platform/Console.h"
#include "records/Messages.h"
#include "run/InputSamples.h"
#include "run/Plate.h"
#include "samplestore/SampleFile.h"

namespace {

std::string FastaRecord(const CSampleFile& sample, const CTraceFile& holder, const CProcessedTrace& trace,
                        bool goodRegionOnly) {
    const std::vector<std::int32_t> bases = ExportBases(trace, goodRegionOnly);
    return '>' + holder.path + '\t' + std::to_string(bases.size()) + "\tQuillion\r\n" +
           SequenceLines(sample, trace, bases, "\r\n");
}

// These functions write a record and return the message for a failure, or nothing after success.

std::optional<MessageId> Written(const std::string& path, platform::Error error) {
    if (!error) return std::nullopt;
    platform::Warn({path, " cannot be written: ", error.Text()});
    return MessageId::WriteFailed;
}

// Appends the record to a common file, completely or not at all.
std::optional<MessageId> AppendRecord(const CSampleFile& sample, const std::string& path, const std::string& record) {
    if (sample.plate->InputSamples().IsWriteForbidden(path)) {
        platform::Warn({path, " is or leads to the place of a sample file and is not written to"});
        return MessageId::CannotOpenForWriting;
    }
    platform::AppendFile file;
    if (file.Open(path)) return MessageId::CannotOpenForWriting;
    const platform::Error added = file.Append(record), closed = file.Close();
    return Written(path, added ? added : closed);
}

// Makes the record the sample's own file.
std::optional<MessageId> WriteRecord(const CSampleFile& sample, const std::string& path, const std::string& record) {
    platform::AtomicFile file;
    if (!IsTargetFree(sample, path) || file.Open(path)) return MessageId::CannotOpenForWriting;
    file.Write(record);
    return Written(path, file.Commit());
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
    if (const auto failure = common ? AppendRecord(*this, path, record) : WriteRecord(*this, path, record)) {
        plate->Log(FormatMessage(*failure, {path}));
        return 0;
    }
    RecordOutput(*this, Format::Fasta, path);
    return 1;
}
