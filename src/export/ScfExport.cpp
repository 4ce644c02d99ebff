// SPDX-License-Identifier: MIT
// SCF files: their content. tracewriter/ScfFile.h describes their layout.
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "config/RunSettings.h"
#include "export/Cut.h"
#include "export/ExportBases.h"
#include "export/Formats.h"
#include "export/SampleTexts.h"
#include "export/ScanValue.h"
#include "platform/Clock.h"
#include "run/Plate.h"
#include "samplestore/ChannelOrder.h"
#include "samplestore/SampleFile.h"
#include "samplestore/Truncate.h"
#include "tracewriter/ClassTable.h"
#include "tracewriter/ComError.h"
#include "tracewriter/Hresult.h"
#include "tracewriter/IScfSamples.h"
#include "tracewriter/IScfWriter.h"

namespace {

constexpr std::int32_t sampleBits = 16;
constexpr double sampleRange = 2000.0;
constexpr std::int32_t goodRegionMargin = 4;  // scans

// Raw scans; `end` is not part of the window.
struct ScanWindow {
    std::int32_t first;
    std::int32_t end;
};

ScanWindow WindowOf(const CProcessedTrace& trace, bool goodRegionOnly) {
    ScanWindow window{TruncateTo32(trace.traceStart), TruncateTo32(trace.traceEnd)};
    if (goodRegionOnly) {
        const std::int64_t goodStart = trace.calledBases.GoodStartScan();
        const std::int64_t goodEnd = trace.calledBases.GoodEndScan();
        window.first = std::max(window.first, CutTo32(goodStart - goodRegionMargin));
        window.end = std::min(window.end, CutTo32(goodEnd + goodRegionMargin));
    }
    return window;
}

using Stretches = std::array<std::span<const std::int32_t>, channelCount>;

void SendStretches(const CInstance<IScfWriter>& writer, const Stretches& stretches, std::int32_t first) {
    if (auto* const taker = writer.Find<IScfSamples>()) return Check(taker->SetSamples(stretches, first));
    const auto& [a, c, g, t] = stretches;
    for (std::size_t i = 0; i < a.size(); ++i)
        Check(writer->SetSample(a[i], c[i], g[i], t[i], first + static_cast<std::int32_t>(i)));
}

// Sends the four curves, all on the scale of the whole trace.
void SendSamples(const CInstance<IScfWriter>& writer, const CProcessedTrace& trace, const ScanWindow& window) {
    double offset = 0.0;
    const double scale = trace.ScaleFor(offset, sampleRange);
    constexpr std::int64_t blockSize = 512;  // scans
    std::array<std::array<std::int32_t, blockSize>, channelCount> block{};
    Stretches stretches;
    const std::int64_t scans = std::int64_t{window.end} - window.first;
    for (std::int64_t first = 0; first < scans; first += blockSize) {
        const std::int64_t count = std::min(blockSize, scans - first);
        const std::int64_t at = window.first + first - TruncateTo32(trace.traceStart);
        for (std::size_t letter = 0; letter < block.size(); ++letter) {
            const std::span stretch = std::span(block[letter]).first(static_cast<std::size_t>(count));
            stretches[letter] = stretch;
            if (scale == 0.0) continue;
            const CScanValues values(trace.channels[static_cast<std::size_t>(channelOrderAcgt[letter])], at, count);
            std::transform(values.All().begin(), values.All().end(), stretch.begin(),
                           [&](double value) { return TruncateTo32((value - offset) / scale); });
        }
        SendStretches(writer, stretches, CutTo32(first));
    }
}

void SendBases(IScfWriter& writer, const CSampleFile& sample, const CProcessedTrace& trace,
               const std::vector<std::int32_t>& bases, std::int32_t first) {
    for (const std::int32_t index : bases) {
        const std::int64_t position = TruncateTo32(trace.calledBases.GetPosition(index));
        const auto letter = static_cast<unsigned char>(sample.ExportLetter(trace, index));
        Check(writer.AddBase(CutTo32(position - first), 0, 0, 0, 0, letter));
    }
}

// `trace` is null in the failed form, which names no base caller.
void SendComments(IScfWriter& writer, const CSampleInfo& info, const CProcessedTrace* trace) {
    const auto add = [&writer](const char* name, const std::string& value) {
        Check(writer.AddComment(std::string(name) + "=" + value + "\n"));
    };
    add("DYEP", info.chemistryName);
    add("MACH", MachineText(info));
    add("NAME", SampleLabel(info));
    add("SampleRemark", info.comment);
    if (trace) add("BCSW", CallerName(*trace));
    add("DATE", platform::CtimeText(info.runStart));
}

// Writes the file and logs it. 0 when no path could be made.
std::int32_t Save(IScfWriter& writer, const CSampleFile& sample, const std::string& path) {
    if (path.empty()) return 0;
    if (!IsTargetFree(sample, path)) throw CComError(HresultFromErrno(EEXIST));
    Check(writer.SaveFile(path));
    RecordOutput(sample, Format::Scf, path);
    return 1;
}

// The result of `write`, which gets a new writer. A failure of the writer is logged and counts as done.
template <class Write>
std::int32_t WithWriter(CPlate& plate, Write write) try {
    const CInstance<IScfWriter> writer;
    if (!writer) throw CComError(E_POINTER);
    Check(writer->SetSampleSize(sampleBits));
    return write(writer);
} catch (const CComError& error) {
    plate.Log(error.ErrorMessage());
    return 1;
}

}  // namespace

std::int32_t CSampleFile::ExportScf(CTraceFile& processed) {
    CProcessedTrace* const trace = processed.Processed();
    const CSampleFile& owner = processed.sample ? *processed.sample : *this;
    if (!trace || !owner.info.analysis.basecallError.empty()) return ExportFailedScf();
    trace->FillArrays();
    const bool goodRegionOnly = plate->Settings().goodRegionOnly != 0;
    return WithWriter(*plate, [&](const CInstance<IScfWriter>& instance) {
        IScfWriter& writer = *instance;
        const ScanWindow window = WindowOf(*trace, goodRegionOnly);
        Check(writer.SetSampleCount(CutTo32(std::int64_t{window.end} - window.first)));
        const std::vector<std::int32_t> bases = ExportBases(*trace, goodRegionOnly);
        Check(writer.SetBaseCount(static_cast<std::int32_t>(bases.size())));
        SendSamples(instance, *trace, window);
        SendBases(writer, *this, *trace, bases, window.first);
        SendComments(writer, info, trace);
        return Save(writer, *this, ExportPath(processed.path, "scf"));
    });
}

std::int32_t CSampleFile::ExportFailedScf() {
    if (plate->Settings().skipFailedExports != 0) return 1;
    return WithWriter(*plate, [&](const CInstance<IScfWriter>& writer) {
        const std::string path = ExportPath(FailedSourcePath(*this), "scf");
        if (path.empty()) return 0;
        SendComments(*writer, info, nullptr);
        return Save(*writer, *this, path);
    });
}
