// SPDX-License-Identifier: MIT
// ABD files: the tags in their order. tracewriter/AbifFile.h describes the layout of the files, docs/abd.md the content
// of each tag.
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <string>
#include <vector>

#include "config/RunSettings.h"
#include "export/AbdChannels.h"
#include "export/AbdDescription.h"
#include "export/AbdTags.h"
#include "export/Cut.h"
#include "export/ExportBases.h"
#include "export/Formats.h"
#include "export/SampleTexts.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "samplestore/SampleFile.h"
#include "samplestore/Truncate.h"
#include "tracewriter/ClassTable.h"
#include "tracewriter/ComError.h"
#include "tracewriter/Hresult.h"
#include "tracewriter/IAbdQualities.h"
#include "tracewriter/IAbdWriter.h"

namespace {

constexpr std::uint32_t maxSeriesLength = 32767;
constexpr std::int32_t goodRegionMargin = 5;  // scans

// The part of a processed trace that its file shows.
struct AbdWindow {
    std::int32_t step;     // every step-th scan is written
    double first, last;    // raw scans
    std::int32_t baseOne;  // scan of the first base, see WindowOf
};

std::uint32_t RawScans(const CSampleFile& sample) {
    return sample.rawTrace ? sample.rawTrace->trace->scanCount : 0;
}

std::int32_t StepFor(std::uint32_t scans) {
    return static_cast<std::int32_t>(scans / maxSeriesLength + 1);
}

// `baseOne` counts raw scans with the good region only, otherwise steps.
AbdWindow WindowOf(const CSampleFile& sample, const CProcessedTrace& trace, bool goodRegionOnly) {
    const std::int32_t step = StepFor(std::max(RawScans(sample), trace.scanCount));
    const CCalledBases& bases = trace.calledBases;
    if (!goodRegionOnly) {
        const double position = bases.GetPosition(0);
        return {step, trace.traceStart, trace.traceEnd, TruncateTo16(position / step)};
    }
    const double first = static_cast<double>(CutTo16(bases.GoodStartScan())) - goodRegionMargin;
    const double last = CutTo16(std::int64_t{bases.GoodEndScan()} + goodRegionMargin);
    return {step, first, last, TruncateTo32(first + goodRegionMargin)};
}

void AddTwice(IAbdWriter& writer, const char* name, std::int32_t value) {
    AddNumberTag(writer, name, 1, value);
    AddNumberTag(writer, name, 2, value);
}

void WriteWindowTags(IAbdWriter& writer, const AbdWindow& window) {
    AddTwice(writer, "AEPt", TruncateTo32((window.last - window.first) / window.step));
    AddTwice(writer, "ASPt", TruncateTo32(window.first));
    AddTwice(writer, "B1Pt", window.baseOne);
}

void WriteRawCurves(IAbdWriter& writer, const CSampleFile& sample, std::int32_t step) {
    if (!sample.rawTrace) return;
    CCapTrace& raw = *sample.rawTrace->trace;
    raw.FillArrays();
    const std::int32_t last = CutTo32(std::int64_t{raw.scanCount} - 1);
    WriteChannels(writer, raw.channels, 0, last, step, 1);
    WriteRunData(writer, sample.info, raw.current, 0, last, step);
}

// The trace's arrays must be filled.
void WriteProcessedCurves(IAbdWriter& writer, const CProcessedTrace& trace, const AbdWindow& window) {
    WriteChannels(writer, trace.channels, TruncateTo32(window.first - trace.traceStart),
                  TruncateTo32(window.last - trace.traceStart), window.step, 9);
}

// The values of the exported bases, one element per base.
struct BaseColumns {
    std::vector<std::uint8_t> letters;
    std::vector<std::int16_t> locations;  // steps from the first scan of the window
    std::vector<std::int16_t> qualities;  // percent
};

BaseColumns ColumnsOf(const CSampleFile& sample, const CProcessedTrace& trace, const std::vector<std::int32_t>& list,
                      const AbdWindow& window) {
    BaseColumns columns;
    for (const std::int32_t index : list) {
        const double position = trace.calledBases.GetPosition(index);
        columns.letters.push_back(static_cast<std::uint8_t>(sample.ExportLetter(trace, index)));
        columns.locations.push_back(TruncateTo16((position - window.first) / window.step));
        columns.qualities.push_back(TruncateTo16(trace.calledBases.GetQuality(index)));
    }
    return columns;
}

void WriteBaseAndSampleTags(IAbdWriter& writer, const CSampleFile& sample, const CProcessedTrace& trace,
                            bool goodRegionOnly, const AbdWindow& window) {
    const std::vector<std::int32_t> list = ExportBases(trace, goodRegionOnly);
    const std::int16_t count = CutTo16(static_cast<std::int64_t>(list.size()));
    const BaseColumns columns = ColumnsOf(sample, trace, list, window);
    AddBytesTag(writer, "PBAS", 1, columns.letters, count);
    AddBytesTag(writer, "PBAS", 2, columns.letters, count);
    WriteChemistryTags(writer, sample.info);
    AddShortsTag(writer, "PLOC", 1, columns.locations, count);
    AddShortsTag(writer, "PLOC", 2, columns.locations, count);
    AddTwice(writer, "PPOS", window.baseOne);
    WriteSampleTags(writer, sample.info);
    AddTextTag(writer, "SVER", 2, CallerName(trace));
    AddShortsTag(writer, "QVAL", 1, columns.qualities, count);
    AddShortsTag(writer, "QVAL", 2, columns.qualities, count);
}

// Passes the qualities of the bases in "QVAL" with the precision of the trace.
void PassQualities(IAbdQualities& taker, const CProcessedTrace& trace, bool goodRegionOnly) {
    std::vector<float> percent;
    for (const std::int32_t index : ExportBases(trace, goodRegionOnly))
        percent.push_back(static_cast<float>(trace.calledBases.GetQuality(index)));
    Check(taker.SetQualities(percent));
}

void WriteCalledSample(const CInstance<IAbdWriter>& instance, const CSampleFile& sample, const CProcessedTrace& trace,
                       bool goodRegionOnly) {
    IAbdWriter& writer = *instance;
    const AbdWindow window = WindowOf(sample, trace, goodRegionOnly);
    WriteWindowTags(writer, window);
    WriteCommentTags(writer, sample.info);
    WriteRawCurves(writer, sample, window.step);
    WriteProcessedCurves(writer, trace, window);
    WriteRunTags(writer, sample);
    if (trace.separationMatrix) WriteMatrix(writer, sample, *trace.separationMatrix);
    WritePlateTags(writer, sample.info);
    WriteBaseAndSampleTags(writer, sample, trace, goodRegionOnly, window);
    if (auto* taker = instance.Find<IAbdQualities>()) PassQualities(*taker, trace, goodRegionOnly);
}

void WriteFailedSample(IAbdWriter& writer, const CSampleFile& sample) {
    WriteCommentTags(writer, sample.info);
    WriteRawCurves(writer, sample, StepFor(RawScans(sample)));
    WriteRunTags(writer, sample);
    WriteMatrix(writer, sample, sample.info.separationMatrix);
    WritePlateTags(writer, sample.info);
    WriteChemistryTags(writer, sample.info);
    WriteSampleTags(writer, sample.info);
}

void LogFailure(CPlate& plate) {
    plate.Log(FormatMessage(MessageId::AbdFailed));
}

// Writes one file, to which `write` adds the tags, and logs the outcome. 1 if the file was closed successfully.
template <class Write>
std::int32_t WriteAbd(CSampleFile& sample, const std::string& sourcePath, bool logMissingWriter, Write write) {
    CPlate& plate = *sample.plate;
    try {
        const CInstance<IAbdWriter> writer;
        if (!writer) {
            if (logMissingWriter) LogFailure(plate);
            return 0;
        }
        const std::string path = sample.ExportPath(sourcePath, "abd");
        if (path.empty()) return 0;
        if (!IsTargetFree(sample, path)) throw CComError(HresultFromErrno(EEXIST));
        std::int32_t opened = 0;
        Check(writer->OpenFile(path, 0, opened));
        if (opened == 0) {
            LogFailure(plate);
            return 0;
        }
        write(writer);
        std::int32_t status = 0;
        Check(writer->CloseFile(status));
        RecordOutput(sample, Format::Abd, path);
        return 1;
    } catch (const CComError& error) {
        LogFailure(plate);
        plate.Log(error.ErrorMessage());
        plate.Log("\r\n");
        return 0;
    }
}

}  // namespace

std::int32_t CSampleFile::ExportAbd(CTraceFile& processed, std::int32_t goodRegionOnly) {
    const CRunSettings& settings = plate->Settings();
    const CSampleFile& owner = processed.sample ? *processed.sample : *this;
    CProcessedTrace* const trace = processed.Processed();
    if (!trace || !owner.info.analysis.basecallError.empty()) return ExportFailedAbd(settings.skipFailedExports);
    if (settings.allowUserGoodRegion != 0) FindGoodRegion();
    if (goodRegionOnly != 0 && trace->calledBases.goodLength == 0) return ExportFailedAbd(settings.skipFailedExports);
    trace->FillArrays();
    return WriteAbd(*this, processed.path, true, [&](const CInstance<IAbdWriter>& writer) {
        WriteCalledSample(writer, *this, *trace, goodRegionOnly != 0);
    });
}

std::int32_t CSampleFile::ExportFailedAbd(std::int32_t skipFailedExports) {
    if (skipFailedExports != 0) return 1;
    return WriteAbd(*this, FailedSourcePath(*this), false,
                    [&](const CInstance<IAbdWriter>& writer) { WriteFailedSample(*writer, *this); });
}
