// SPDX-License-Identifier: MIT
// CSampleFile: the text dump, for people and spreadsheets. docs/text-dump.md describes every line.
#include <string>
#include <string_view>

#include "export/ExportBases.h"
#include "export/Formats.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "platform/Error.h"
#include "records/TextFile.h"
#include "run/Plate.h"
#include "samplestore/CapTrace.h"
#include "samplestore/SampleFile.h"
#include "samplestore/Truncate.h"

namespace {

constexpr double processedFactor = 100.0;  // shows the fractions of a processed trace as percent

// Texts from a file may contain a NUL, which ends them.
std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::string_view OrNA(std::string_view text) {
    const std::string_view shown = UpToNul(text);
    return shown.empty() ? "N/A" : shown;
}

// Writes lines of a label and a value in one of the dump's formats.
class CLines {
  public:
    explicit CLines(CTextFile& file) : out(file) {}

    void Text(std::string_view label, std::string_view value) { out << label << UpToNul(value) << '\n'; }
    void TextOrNA(std::string_view label, std::string_view value) { out << label << OrNA(value) << '\n'; }
    void Character(std::string_view label, std::uint8_t value) { out << label << static_cast<char>(value) << '\n'; }
    void Float(std::string_view label, float value) { out << label << value << '\n'; }
    void Integer(std::string_view label, std::int64_t value) { out << label << value << '\n'; }
    void Unsigned(std::string_view label, std::int32_t value) { Integer(label, static_cast<std::uint32_t>(value)); }
    // The text of a time ends with a line feed already, so an empty line follows.
    void Time(std::string_view label, std::int32_t seconds) { out << label << platform::CtimeText(seconds) << '\n'; }

  private:
    CTextFile& out;
};

void DumpDescription(CLines lines, const CSampleInfo& info, const std::string& path) {
    lines.Text("Run Info for the file : ", path);
    lines.TextOrNA("Sample name : ", info.sampleName);
    lines.TextOrNA("Plate name : ", info.plateId);
    lines.Text("Instrument ID : ", FieldText(info.instrumentId));
    lines.Text("Run ID : ", FieldText(info.runId));
    lines.TextOrNA("Comment : ", info.comment);
    lines.TextOrNA("Chemistry name : ", info.chemistryName);
    lines.TextOrNA("Chemistry application : ", info.chemistryApplication);
    lines.TextOrNA("Beam Splitter1 : ", info.beamSplitterA);
    lines.TextOrNA("Beam Splitter2 : ", info.beamSplitterB);
    lines.Character("laserMode : ", info.laserMode);
    lines.TextOrNA("Base Caller : ", info.analysis.baseCaller);
    lines.Text("Operator : ", FieldText(info.operatorName));
    lines.Float("Run Voltage : ", info.runVoltage);
    lines.Float("Run time : ", info.runTime);
    lines.Float("Injection time : ", info.injectionTime);
    lines.Float("Injection voltage : ", info.injectionVoltage);
    lines.Float("Temperature : ", info.temperature);
    lines.Integer("Lazer Index : ", info.laserIndex);
    lines.Float("PMT Voltage1: ", info.pmtVoltage1);
    lines.Float("PMT Voltage2: ", info.pmtVoltage2);
    std::string order;
    for (const auto& base : info.channelBase)
        order += FieldText(base);
    lines.Text("Base order : ", order);
    lines.Integer("Is processed file : ", info.processed);
    lines.Integer("Is saturated : ", info.saturated);
    lines.Float("Version : ", info.version);
    lines.Time("Run start time : ", info.runStart);
    lines.Time("Run stop time : ", info.runStop);
    lines.Integer("Number of lines : ", info.scanCount);
    lines.Integer("Scan Rate : ", info.scanRate);
    lines.Integer("Number of capillaries : ", info.capillaries);
}

void DumpAnalysis(CLines lines, const CAnalysisInfo& analysis) {
    lines.Integer("Bases Called : ", analysis.basesCalled);
    lines.Unsigned("End Good Sequence : ", analysis.endGood);
    lines.Unsigned("End Sequence : ", analysis.endSequence);
    lines.Unsigned("End Trace Processing : ", analysis.endTrace);
    lines.Unsigned("End Signal : ", analysis.endSignal);
    lines.Unsigned("Start Good Sequence : ", analysis.startGood);
    lines.Unsigned("Start Sequence : ", analysis.startSequence);
    lines.Unsigned("Start Trace Processing : ", analysis.startTrace);
    lines.Unsigned("Start Signal : ", analysis.startSignal);
}

void DumpSequence(CTextFile& out, const CSampleFile& sample, const CProcessedTrace& trace) {
    out << "\nSequence :\n" << SequenceLines(sample, trace, ExportBases(trace, false), "\n") << '\n';
}

double ValueOr0(const std::vector<double>& curve, std::size_t scan) {
    return scan < curve.size() ? curve[scan] : 0.0;
}

// Rows are numbered from 0 at the first scan of this trace. A curve that is too short is continued with zeros.
void DumpTable(CTextFile& out, const CCapTrace& trace, double factor) {
    out << "Scan\t"
        << "  Channel1\t"
        << "  Channel2\t"
        << "  Channel3\t"
        << "Channel4\t"
        << " Current"
        << "\n\n";
    for (std::uint32_t row = 0; row < trace.scanCount; ++row) {
        out << std::int64_t{row} << "\t\t";
        for (const auto& curve : trace.channels)
            out << TruncateTo64(ValueOr0(curve, row) * factor) << "\t\t";
        out << TruncateTo64(ValueOr0(trace.current, row)) << '\n';
    }
}

// False, after a warning, if the dump cannot be written.
bool WriteDump(const std::string& path, const CSampleFile& sample, const CTraceFile& holder) {
    CTextFile out(path);
    DumpDescription(CLines(out), sample.info, holder.path);
    const CProcessedTrace* processed = holder.Processed();
    if (processed) {
        DumpAnalysis(CLines(out), sample.info.analysis);
        DumpSequence(out, sample, *processed);
    }
    holder.trace->FillArrays();
    DumpTable(out, *holder.trace, processed ? processedFactor : 1.0);
    const platform::Error error = out.Commit();
    if (error) platform::Warn({path, " cannot be written: ", error.Text()});
    return !error;
}

}  // namespace

std::int32_t CSampleFile::ExportText(CTraceFile& holder) {
    const std::string path = ExportPath(holder.path, "txt");
    if (path.empty()) return 0;
    const bool isWritten = IsTargetFree(*this, path) && WriteDump(path, *this, holder);
    RecordOutput(*this, Format::Text, path, isWritten);  // a dump that cannot be written counts as done
    return 1;
}
