// SPDX-License-Identifier: MIT
// A sample with a raw and a processed trace in a plate folder of its own, and a writer that fails on demand.
#pragma once

#include <gtest/gtest.h>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/ChannelOrder.h"
#include "samplestore/SampleFile.h"
#include "support/Environment.h"
#include "support/TempFolder.h"
#include "tracewriter/ClassTable.h"
#include "tracewriter/IAbdWriter.h"
#include "tracewriter/IScfWriter.h"
#include "tracewriter/TraceReaders.h"

class TraceExportTest : public testing::Test {
  protected:
    testsupport::TempFolder temp;
    testsupport::Environment zone{"TZ", "UTC"};
    const std::string folder = temp.Path();
    CRunDriver driver{1};
    std::unique_ptr<CPlate> plate;
    std::unique_ptr<CSampleFile> sample;
    CClassTable savedClasses;

    void SetUp() override {
        driver.unattended = 1;
        driver.baseCallers = std::make_unique<CBaseCallerSet>(&driver);
        driver.baseCallers->exportToSubfolders = 0;
        plate = std::make_unique<CPlate>(folder, std::vector<CFileTypeFilter>(), &driver);
        plate->outputFolder = folder;
        sample = std::make_unique<CSampleFile>("s1A01.rsd", plate.get());
        sample->info.wellId = "B11";
        sample->info.plateColumns = 12;
        sample->info.plateRows = 8;
        sample->info.version = 1.2f;
        sample->info.runStart = 951831058;  // 29 February 2000, 13:30:58
        channelOrderAcgt = {2, 0, 3, 1};
        channelOrderCagt = {0, 2, 3, 1};
    }
    void TearDown() override { CClassTable::Replace(savedClasses); }

    // Raw curves 500 + 10 s + 300 k in channel k at scan s, and the current 7 s.
    void GiveRaw(std::uint32_t scans) {
        CCapTrace& raw = *sample->CreateProcessedTrace(folder + "/s1A01.rsd", 0, nullptr)->trace;
        raw.scanCount = scans;
        for (std::uint32_t s = 0; s < scans; ++s) {
            raw.current.push_back(7.0 * s);
            for (std::size_t k = 0; k < 4; ++k)
                raw.channels[k].push_back(500.0 + 10.0 * s + 300.0 * static_cast<double>(k));
        }
    }
    // Processed curves 10 i + k in channel k at scan `start` + i, with a peak of 4000 at the start of channel 3.
    CProcessedTrace& GiveProcessed(std::uint32_t start, std::uint32_t end) {
        CProcessedTrace& trace = *sample->CreateProcessedTrace(folder + "/s1A01.esd", 1, nullptr)->Processed();
        trace.scanCount = end - start;
        trace.traceStart = start;
        trace.traceEnd = end;
        for (std::size_t k = 0; k < 4; ++k)
            for (std::uint32_t i = 0; i < trace.scanCount; ++i)
                trace.channels[k].push_back(10.0 * i + static_cast<double>(k));
        if (trace.scanCount > 0) trace.channels[3][0] = 4000.0;
        return trace;
    }
    static void AddBase(CProcessedTrace& trace, char letter, float position, float quality, int descriptor = 0) {
        BaseRecord record{};
        record.letter = letter;
        record.quality = quality;
        record.descriptor = descriptor;
        PeakRecord peak{};
        peak.position = position;
        trace.calledBases.Append(CCalledBase(record, {&peak, 1}));
    }
    static void SetGoodRegion(CProcessedTrace& trace, std::int32_t start, std::int32_t length) {
        trace.calledBases.goodStart = start;
        trace.calledBases.goodLength = length;
    }

    std::string Log() const {
        std::string text;
        static_cast<void>(platform::ReadFile(folder + "/basecall.log", text));
        return text;
    }
    std::string AbdPath() const { return folder + "/s1A01.abd"; }
    std::string ScfPath() const { return folder + "/s1A01.scf"; }
    std::int32_t ExportAbd(std::int32_t goodRegionOnly = 0) {
        return sample->ExportAbd(*sample->processedTrace, goodRegionOnly);
    }
    std::int32_t ExportScf() { return sample->ExportScf(*sample->processedTrace); }
};

// Notes what it is sent and fails at one operation.
class CFailingWriter : public IUnknown, public IAbdWriter, public IScfWriter {
  public:
    static inline std::string failAt;  // name of an operation, or of a tag
    static inline std::int32_t opens = 1;
    static inline std::vector<std::string> tags;

    // Stands in for both classes; `result` is that of the creation.
    static void Install(HRESULT result, const std::string& failing) {
        failAt = failing;
        opens = 1;
        tags.clear();
        CClassTable table;
        for (auto& [clsid, factory] : table.classes)
            factory = [result](std::unique_ptr<IUnknown>& object) {
                if (result >= 0) object = std::make_unique<CFailingWriter>();
                return result;
            };
        CClassTable::Replace(table);
    }

    HRESULT QueryInterface(const Guid& id, void*& interface) override {
        interface = nullptr;
        if (id == IAbdWriter::iid) interface = static_cast<IAbdWriter*>(this);
        if (id == IScfWriter::iid) interface = static_cast<IScfWriter*>(this);
        return interface && failAt != "QueryInterface" ? S_OK : E_NOINTERFACE;
    }
    HRESULT OpenFile(const std::string&, std::int32_t, std::int32_t& opened) override {
        opened = opens;
        return ResultOf("OpenFile");
    }
    HRESULT AddTag(const std::string& name, std::int32_t number, const CTagValue& value) override {
        tags.push_back(name + std::to_string(number) + (value.index() == 0 ? " empty" : ""));
        return ResultOf(tags.back());
    }
    HRESULT CloseFile(std::int32_t&) override { return ResultOf("CloseFile"); }
    HRESULT SetSampleCount(std::int32_t) override { return ResultOf("SetSampleCount"); }
    HRESULT SetBaseCount(std::int32_t) override { return ResultOf("SetBaseCount"); }
    HRESULT SetSampleSize(std::int32_t) override { return ResultOf("SetSampleSize"); }
    HRESULT SetSample(std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t) override {
        return ResultOf("SetSample");
    }
    HRESULT SaveFile(const std::string&) override { return ResultOf("SaveFile"); }
    HRESULT AddBase(std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::uint32_t) override {
        return ResultOf("AddBase");
    }
    HRESULT AddComment(const std::string&) override { return ResultOf("AddComment"); }

  private:
    static HRESULT ResultOf(const std::string& operation) {
        return operation == failAt ? MakeHresult(0x80040207) : S_OK;
    }
};
