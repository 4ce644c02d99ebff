// The text dump of a sample, for people and spreadsheets. Every line is told in docs/text-dump.md.
#include <string>
#include <string_view>

#include "export/ExportBases.h"
#include "export/Formats.h"
#include "platform/Clock.h"
#include "platform/Console.h"
#include "records/TextFile.h"
#include "run/Plate.h"
#include "samplestore/SampleFile.h"
#include "samplestore/Truncate.h"

namespace {

constexpr double processedFactor = 100.0;  // processed values are fractions

// Texts from a file may hold a NUL, which ends them.
std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::string_view Optional(std::string_view text) {
    const std::string_view shown = UpToNul(text);
    return shown.empty() ? "N/A" : shown;
}

// Lines of a label and a value in one of the dump's forms.
class CLines {
  public:
    explicit CLines(CTextFile& file) : out(file) {}

    void Text(std::string_view label, std::string_view value) { out << label << UpToNul(value) << '\n'; }
    void OptionalText(std::string_view label, std::string_view value) { out << label << Optional(value) << '\n'; }
    void Character(std::string_view label, std::uint8_t value) { out << label << static_cast<char>(value) << '\n'; }
    void Float(std::string_view label, float value) { out << label << value << '\n'; }
    void Integer(std::string_view label, std::int64_t value) { out << label << value << '\n'; }
    void Unsigned(std::string_view label, std::int32_t value) { Integer(label, static_cast<std::uint32_t>(value)); }
    // The time's text has a line end of its own, so an empty line follows.
    void Time(std::string_view label, std::int32_t seconds) { out << label << platform::CtimeText(seconds) << '\n'; }

  private:
    CTextFile& out;
};

void DumpDescription(CLines lines, const CSampleInfo& info, const std::string& path) {
    lines.Text("Run Info for the file : ", path);
    lines.OptionalText("Sample name : ", info.sampleName);
    lines.OptionalText("Plate name : ", info.plateId);
    lines.Text("Instrument ID : ", FieldText(info.instrumentId));
    lines.Text("Run ID : ", FieldText(info.runId));
    lines.OptionalText("Comment : ", info.comment);
    lines.OptionalText("Chemistry name : ", info.chemistryName);
    lines.OptionalText("Chemistry application : ", info.chemistryApplication);
    lines.OptionalText("Beam Splitter1 : ", info.beamSplitterA);
    lines.OptionalText("Beam Splitter2 : ", info.beamSplitterB);
    lines.Character("laserMode : ", info.laserMode);
    lines.OptionalText("Base Caller : ", info.analysis.baseCaller);
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

// The rows count from 0 at the first scan of this trace. A curve that breaks off goes on with zeros.
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

// A dump that cannot be made counts as done.
void WriteDump(const std::string& path, const CSampleFile& sample, const CTraceFile& holder) {
    CTextFile out(path);
    DumpDescription(CLines(out), sample.info, holder.path);
    const CProcessedTrace* processed = holder.Processed();
    if (processed) {
        DumpAnalysis(CLines(out), sample.info.analysis);
        DumpSequence(out, sample, *processed);
    }
    holder.trace->FillArrays();
    DumpTable(out, *holder.trace, processed ? processedFactor : 1.0);
    if (const platform::Error error = out.Commit()) platform::Warn({path, " cannot be written: ", error.Text()});
}

}  // namespace

std::int32_t CSampleFile::ExportText(CTraceFile& holder) {
    const std::string path = ExportPath(holder.path, "txt");
    if (path.empty()) return 0;
    if (IsTargetFree(*this, path)) WriteDump(path, *this, holder);
    Exported(*this, Format::Text, path);
    return 1;
}
