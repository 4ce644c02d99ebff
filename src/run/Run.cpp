// SPDX-License-Identifier: MIT
// CRunDriver: the loop over plates, base callers and single files.
#include <algorithm>

#include "discovery/SplitPath.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "run/Memory.h"
#include "run/Plate.h"
#include "run/RunDriver.h"
#include "samplestore/SampleFile.h"

namespace {

// Number of results to expect: one for each sample, operation and base caller. Wraps at 32 bits, as CheckDiskSpace
// does.
std::int32_t UnitsFor(std::size_t samples, const CBaseCallerSet& set, const std::vector<std::string>& callerNames) {
    const std::size_t callers = std::max<std::size_t>(callerNames.size(), 1);
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(samples * set.sampleSwitches.size() * callers));
}

// The plate folder of a single file. A path without a separator names a file in the working folder.
std::string FolderOf(std::string path) {
    if (path.find_first_of("\\/") == std::string::npos) return platform::CurrentFolder().value_or(".");
    SplitPath(path);
    return path;
}

// Runs `pass` once for each library asked for, or once with the library that binding made current. A name that cannot
// be selected has been reported, and its pass runs with whichever library is current.
template <class Pass>
void ForEachCaller(CBaseCallerSet& set, const std::vector<std::string>& callerNames, Pass pass) {
    if (callerNames.empty()) pass();
    for (const std::string& name : callerNames) {
        set.SelectCaller(name);
        pass();
    }
}

}  // namespace

std::int32_t CRunDriver::Run(const std::vector<std::string>& callerNames) {
    const std::string first = callerNames.empty() ? std::string() : callerNames.front();
    const std::int32_t bound = unattended != 0 ? baseCallers->BindOneCaller(first) : baseCallers->BindCallers(first);
    if (bound == 0) return 0;
    const std::int32_t result = RunPlates(callerNames) != 0 ? RunFiles(callerNames) : 0;
    SyncOutput();
    return result;
}

std::int32_t CRunDriver::RunPlates(const std::vector<std::string>& callerNames) {
    for (const std::string& folder : inputPlates) {
        std::int32_t result = 1;
        if (!WithinMemory([&] { result = RunPlate(folder, callerNames); }))
            platform::Warn({"there is not enough memory for the plate ", folder});
        if (result == 0) return 0;
    }
    return 1;
}

std::int32_t CRunDriver::RunPlate(const std::string& folder, const std::vector<std::string>& callerNames) {
    std::unique_ptr<CPlate> plate;
    OpenPlate(folder, plate);
    inputNames.AddPlate(*plate);
    if (CheckDiskSpace(UnitsFor(plate->scan.files.size(), *baseCallers, callerNames)) == 0) return 0;
    ForEachCaller(*baseCallers, callerNames, [&] { baseCallers->ProcessPlate(*plate); });
    return 1;
}

std::int32_t CRunDriver::RunFiles(const std::vector<std::string>& callerNames) {
    if (inputFiles.empty()) return 1;
    if (CheckDiskSpace(UnitsFor(inputFiles.size(), *baseCallers, callerNames)) == 0) return 0;
    std::int32_t result = 1;
    for (const std::string& path : inputFiles)
        if (!WithinMemory([&] { result = RunFile(path, callerNames, result); })) {
            platform::Warn({"there is not enough memory for the file ", path});
            result = 0;
        }
    return result;
}

std::int32_t CRunDriver::RunFile(const std::string& path, const std::vector<std::string>& callerNames,
                                 std::int32_t before) {
    CPlate plate(FolderOf(path), this);
    inputNames.AddFile(path, plate);
    std::unique_ptr<CSampleFile> sample;
    std::int32_t isLoaded = 0, result = before;
    const bool hadMemory = WithinMemory([&] {
        isLoaded = OpenSample(path, sample, plate);
        if (isLoaded == 0) return;
        ForEachCaller(*baseCallers, callerNames, [&] {
            if (baseCallers->PreparePlate(plate) != 0) result = baseCallers->ProcessSample(*sample, -1, -1);
        });
    });
    if (isLoaded != 0 && hadMemory) return result;
    if (!hadMemory) sample.reset();
    Skip(plate, path, false);
    return 0;
}
