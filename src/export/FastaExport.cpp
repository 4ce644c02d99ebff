// FASTA files: the called sequence of a sample as one record.
//
//   line       content (each ends in CR LF)
//   --------   -------------------------------------------------------------------------------
//   header     ">", path of the processed file, tab, number of letters, tab, "Quillion"
//   sequence   50 letters a line
//   last       the letters that remain; written even when there are none, so it may be empty
#include <string>
#include <tuple>
#include <vector>

#include "export/ExportBases.h"
#include "platform/Files.h"
#include "records/HtmlFile.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "samplestore/SampleFile.h"

namespace {

constexpr std::size_t lettersPerLine = 50;

std::string FastaRecord(const CSampleFile& sample, const CTraceFile& holder, const CProcessedTrace& trace,
                        bool goodRegionOnly) {
    const std::vector<std::int32_t> bases = ExportBases(trace, goodRegionOnly);
    std::string record;
    record.reserve(holder.path.size() + bases.size() + bases.size() / lettersPerLine * 2 + 64);
    record.append(">").append(holder.path).append("\t").append(std::to_string(bases.size())).append("\tQuillion\r\n");
    std::size_t letters = 0;
    for (const std::int32_t index : bases) {
        record += sample.ExportLetter(trace, index);
        if (++letters % lettersPerLine == 0) record += "\r\n";
    }
    return record += "\r\n";
}

// Adds `record` at the end of the file, whole or not at all.
bool Append(platform::File& file, const std::string& record) {
    std::int64_t end = 0;
    if (file.Length(end) || file.SeekSet(end)) return false;
    if (!file.Write(record)) return !file.Close();
    std::ignore = file.Truncate(end);
    return false;
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
    platform::File file;
    if (file.Open(path, common ? platform::OpenMode::CreateOrKeep : platform::OpenMode::CreateOrEmpty)) {
        plate->Log(FormatMessage(MessageId::CannotOpenForWriting, {path}));
        return 0;
    }
    if (!Append(file, FastaRecord(*this, *processed, *trace, goodRegionOnly != 0))) {
        plate->Log(FormatMessage(MessageId::WriteFailed, {path}));
        return 0;
    }
    plate->Log(FormatMessage(MessageId::FastaExported));
    plate->AddToMarkupLog(path, markup::fastaSection);
    return 1;
}
