// SPDX-License-Identifier: MIT
// One run of the program: its input, its output folder, and the loop over plates and samples.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "plugins/BaseCallerSet.h"
#include "run/InputNames.h"
#include "run/InputSamples.h"

class CPlate;
class CSampleFile;
struct CPlateRecords;

// Warns if the name of an output folder is that of something else.
void WarnUnlessFolder(const std::string& path);

class CRunDriver {
  public:
    std::vector<CFileTypeFilter> fileTypes;
    std::vector<std::string> inputFiles;                            // single sample files
    std::vector<std::string> inputPlates;                           // plate folders
    std::map<std::string, std::shared_ptr<CPlateRecords>> records;  // of the plates so far, by folder
    std::shared_ptr<CPlateRecords> latestRecords;                   // one of them
    CInputSamples inputSamples;                                     // the files that the run must not change
    std::string analysisIniPath;                                    // empty when the analysis settings are not used
    std::string settingsIniPath;
    std::string outputFolder;  // root of all output
    std::unique_ptr<CBaseCallerSet> baseCallers;
    bool hasOutput = false;  // something has been written there
    std::int32_t unattended = 0;
    std::int32_t skipAnalysisIni;

    // With a non-zero `skipAnalysisIni` the analysis settings are not looked for.
    explicit CRunDriver(std::int32_t skipAnalysisIni);
    virtual ~CRunDriver();
    CRunDriver(const CRunDriver&) = delete;
    CRunDriver& operator=(const CRunDriver&) = delete;

    // --- run/ ---

    // Applies the command line and runs. `switchNames` and `types` are as for CCommandLine. 0 if the run did not start
    // or ended early; otherwise the result of Run.
    std::int32_t ProcessCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames,
                                    const std::vector<CFileTypeFilter>& types);
    // Shows a message of the run: in a box, or in the start-up log when unattended, and on standard output in both
    // cases.
    void Report(const std::string& text);
    // Reports a syntax error in a section of a settings file. The caller decides how to go on.
    void ReportSyntaxError(const std::string& file, const std::string& section);
    // Binds the base callers and processes the input with each library of `callerNames`, or with the default one when
    // there are none. Non-zero if all input was processed and the last single file succeeded.
    std::int32_t Run(const std::vector<std::string>& callerNames);
    // Replaces `plate` by a new plate for `folder` and lists its samples.
    void OpenPlate(const std::string& folder, std::unique_ptr<CPlate>& plate);
    // Records that a sample is skipped in the plate's log and, with `isReported`, through Report.
    void Skip(CPlate& plate, const std::string& path, bool isReported);
    // Replaces `sample` by the one at `path`. 0 if it does not load; `sample` is then the one that failed.
    std::int32_t OpenSample(const std::string& path, std::unique_ptr<CSampleFile>& sample, CPlate& plate);
    // Waits until the output is on the disk; warns if that fails and there is any.
    void SyncOutput() const;
    // 1 if the output volume has room for `units` results or the user answers to go on, else 0.
    std::int32_t CheckDiskSpace(std::int32_t units);

    // --- config/ ---

    // Finds the settings files. 1, or 0 after showing a box.
    std::int32_t LocateSettings();
    // Makes the folder if needed and sets outputFolder to it. 1, or 0 after a report.
    std::int32_t SetOutputFolder(const std::string& path);
    // The same with the folder given in the registry or, if that fails, with "AnalyzedData" in the installation folder.
    std::int32_t SetDefaultOutputFolder();
    // Makes one folder level. 0, after a report, only when the parent is missing; any other failure counts as success
    // (1).
    std::int32_t MakeFolder(const std::string& path);

  private:
    // The two halves of Run. RunPlates gives 0 when the user stops because of disk space, RunFiles the result of the
    // run.
    std::int32_t RunPlates(const std::vector<std::string>& callerNames);
    std::int32_t RunFiles(const std::vector<std::string>& callerNames);
    // Processes one plate with all base callers. 0 as for RunPlates.
    std::int32_t RunPlate(const std::string& folder, const std::vector<std::string>& callerNames);
    // Processes one single file with all base callers. The result of the last pass, or `before` when no pass ran.
    std::int32_t RunFile(const std::string& path, const std::vector<std::string>& callerNames, std::int32_t before);

    CInputNames inputNames;
};
