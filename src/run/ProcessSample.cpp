// SPDX-License-Identifier: MIT
// CBaseCallerSet: processing the samples of a plate, one operation after another.
#include "config/FileExists.h"
#include "discovery/SplitPath.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "plugins/BaseCallerSet.h"
#include "records/Messages.h"
#include "run/InputSamples.h"
#include "run/Memory.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "run/Switches.h"
#include "samplestore/SampleFile.h"
#include "samplestore/TraceFile.h"

namespace {

// Where the sample's calls are stored. Raw files of both types, .rsd and .esd, give an .esd file.
std::string ProcessedPath(const CSampleFile& sample) {
    return sample.plate->outputFolder + '/' + WithoutExtension(sample.fileName) + ".esd";
}

// Removes what a failed store left behind, but never a sample of the input, under whatever name it is reached.
void DeleteTarget(const CSampleFile& sample, const CInputSamples& inputs) {
    const std::string& path = sample.processedTrace->path;
    if (sample.rawTrace && platform::IsSameFile(sample.rawTrace->path, path)) return;
    if (!inputs.IsReplaceForbidden(path)) platform::DeleteIfThere(path);
}

}  // namespace

std::int32_t CBaseCallerSet::PreparePlate(CPlate& plate) {
    // No library, so no folder for its calls. The reason has been reported already.
    if (currentCaller == nullptr) return 0;
    const std::string folder = driver->outputFolder + '/' + plate.name + currentCaller->folderSuffix;
    if (driver->MakeFolder(folder) == 0) return 0;
    WarnUnlessFolder(folder);
    plate.outputFolder = folder;
    return 1;
}

std::int32_t CBaseCallerSet::ProcessPlate(CPlate& plate) {
    if (PreparePlate(plate) == 0) return 0;
    for (const std::string& path : plate.scan.files) {
        std::int32_t isLoaded = 0;
        const bool hadMemory = WithinMemory([&] {
            isLoaded = plate.LoadSample(path);
            if (isLoaded != 0) ProcessSample(*plate.currentSample, -1, -1);
        });
        if (isLoaded != 0 && hadMemory) continue;
        // Frees the sample's memory, so that there is some for the message.
        if (!hadMemory) plate.currentSample.reset();
        if (!WithinMemory([&] { driver->Skip(plate, path, true); }))
            platform::Warn({"there is not enough memory for ", path});
    }
    driver->SyncOutput();
    return 1;
}

std::int32_t CBaseCallerSet::ProcessSample(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan) {
    if (sampleSwitches.empty()) return 0;
    sample.CreateProcessedTrace(ProcessedPath(sample), 1, currentCaller);
    SampleState state;
    for (const std::string& step : sampleSwitches) {
        if (IsSwitch(step, Switch::BaseCall))
            StepBaseCall(sample, firstScan, lastScan, state);
        else
            StepExport(step, sample, state);
    }
    return state.result != 0 && !state.failed ? 1 : 0;
}

void CBaseCallerSet::StepBaseCall(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan,
                                  SampleState& state) {
    const std::string path = sample.processedTrace->path;
    const bool exists = FileExists(path) != 0;
    if (exists && sample.LoadStored()) {
        sample.plate->Log(FormatMessage(MessageId::AlreadyExists, {path}));
        sample.plate->Log(FormatMessage(MessageId::Skipped, {path}));
        return;
    }
    // A link that leads nowhere does not exist in this sense, but its name is in use.
    if (exists || platform::IdentityOfName(path))
        platform::Warn({"the stored sample ", path, " cannot be read and is called again"});
    state.result = BaseCallSample(sample, firstScan, lastScan);
    if (state.result == 0) state.failed = true;
}

void CBaseCallerSet::StepExport(const std::string& step, CSampleFile& sample, SampleState& state) {
    const CSwitch* const row = FindSwitch(step);
    if (!row || !row->step) {
        platform::Warn("there is no operation " + step);
        state.result = 0;
        return;
    }
    const auto result = row->step({*this, sample, state.failed ? nullptr : sample.processedTrace});
    state.result = result.value_or(state.result);
}

std::int32_t CBaseCallerSet::BaseCallSample(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan) {
    CPlate& plate = *sample.plate;
    CTraceFile& holder = *sample.processedTrace;
    const std::string& library = currentCaller->fileName;
    const std::int32_t called = sample.BaseCall(currentCaller->module, *dyeMatrix, firstScan, lastScan, procedureIndex);
    if (called == 0) {
        plate.Log(FormatMessage(MessageId::BaseCallFailed, {sample.fileName, library}));
        if (sample.SaveFailedSample(holder) == 0) DeleteTarget(sample, driver->inputSamples);
        return 0;
    }
    if (sample.SaveProcessedSample(holder, procedureIndex) == 0) {
        DeleteTarget(sample, driver->inputSamples);
        return 0;
    }
    const std::string stored = sample.fileName + " (proc. file name: " + holder.path + ")";
    plate.Log(FormatMessage(MessageId::BaseCallSucceeded, {stored, library}));
    return called;
}

std::string CBaseCallerSet::PlateFastaFile(const CPlate& plate) const {
    const std::string& folder = plate.outputFolder;
    std::string fastaFolder = folder + '/';
    if (exportToSubfolders != 0) {
        fastaFolder += "FASTA/";
        if (driver->MakeFolder(fastaFolder) == 0) return {};
    }
    return fastaFolder + LastComponent(folder) + ".seq";
}

std::string CBaseCallerSet::RunFastaFile() const {
    return driver->outputFolder + '/' + LastComponent(driver->outputFolder) + ".seq";
}
