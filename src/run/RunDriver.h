// The run: what goes in, where it comes out, and the way of the program through it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "plugins/BaseCallerSet.h"
#include "run/InputNames.h"
#include "run/InputSamples.h"
#include "samplestore/SampleFile.h"

class CPlate;
struct CPlateRecords;

class CRunDriver {
  public:
    std::vector<CFileTypeFilter> fileTypes;
    std::vector<std::string> inputFiles;     // single sample files
    std::vector<std::string> inputPlates;    // plate folders
    std::shared_ptr<CPlateRecords> records;  // of the latest plate; the next one has them too if it has the same folder
    CInputSamples inputSamples;              // which files of the input nothing may change
    std::string analysisIniPath;             // stays empty unless LocateSettings looks for it
    std::string settingsIniPath;
    std::string outputFolder;  // root of all output
    std::unique_ptr<CBaseCallerSet> baseCallers;
    std::int32_t unattended = 0;
    std::int32_t skipAnalysisIni;

    // While `skipAnalysisIni` is not 0 the analysis settings are not looked for.
    explicit CRunDriver(std::int32_t skipAnalysisIni);
    virtual ~CRunDriver();
    CRunDriver(const CRunDriver&) = delete;
    CRunDriver& operator=(const CRunDriver&) = delete;

    // --- run/ ---

    // Applies the command line and runs. 0 if the run did not start or ended early.
    std::int32_t ProcessCommandLine(int argc, const char* const* argv, const std::vector<std::string>& switchNames,
                                    const std::vector<CFileTypeFilter>& types);
    // A run-level message: a box, or the start-up log in an unattended run, and standard output in both.
    void Report(const std::string& text);
    // Reports a syntax error in a section of a settings file; what follows is the caller's business.
    void ReportSyntaxError(const std::string& file, const std::string& section);
    // Binds the base callers and walks the input. Non-zero if the walk was completed and the last single file went
    // well.
    std::int32_t Run(const std::vector<std::string>& callerNames);
    // Replaces `plate` by the plate of `folder`, whose samples are listed now.
    void OpenPlate(const std::string& folder, std::unique_ptr<CPlate>& plate);
    // Tells that a sample is left out, in the plate's log and, when it is one of a plate, to Report.
    void Skip(CPlate& plate, const std::string& path, bool isReported);
    // Replaces `sample` by the one at `path`. 0 if it did not load.
    std::int32_t OpenSample(const std::string& path, std::unique_ptr<CSampleFile>& sample, CPlate& plate);
    // Waits until the output is on the disk; a failure is warned of.
    void SyncOutput() const;
    // 1 if there is room for `units` results on the output volume or the user goes on all the same.
    std::int32_t CheckDiskSpace(std::int32_t units);

    // --- config/ ---

    // Finds the settings files. 1, or 0 after a box.
    std::int32_t LocateSettings();
    // Makes the folder if needed and takes it as outputFolder. 1, or 0 after a report.
    std::int32_t SetOutputFolder(const std::string& path);
    // The same with the folder from the registry, or else with the one below the installation's root.
    std::int32_t SetDefaultOutputFolder();
    // One level only. 0 (after a report) only when the parent is missing; any other failure counts as 1.
    std::int32_t MakeFolder(const std::string& path);

  private:
    // The two halves of Run. RunPlates: 0 when the user does not go on for want of room. RunFiles: the result of the
    // run.
    std::int32_t RunPlates(const std::vector<std::string>& callerNames);
    std::int32_t RunFiles(const std::vector<std::string>& callerNames);
    // One plate through all base callers. 0 as for RunPlates.
    std::int32_t RunPlate(const std::string& folder, const std::vector<std::string>& callerNames);
    // One single file through all base callers. The result of its last pass; `before` when there was none.
    std::int32_t RunFile(const std::string& path, const std::vector<std::string>& callerNames, std::int32_t before);

    CInputNames inputNames;
};
