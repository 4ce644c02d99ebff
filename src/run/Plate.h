// SPDX-License-Identifier: MIT
// One plate during a run: a plate folder, or the folder of a single sample file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "discovery/FolderScan.h"
#include "platform/AppendFile.h"
#include "samplestore/SampleFile.h"

class CInputSamples;
class CRunDriver;
struct CPlateRecords;
struct CRunSettings;

class CPlate {
  public:
    CFolderScan scan;                            // the input folder and the sample files found there
    std::unique_ptr<CSampleFile> currentSample;  // in plate mode; none until the first load
    std::string outputFolder;                    // for this plate's output with the current base caller
    CRunDriver* driver;                      // not owned; may be null for a plate that is only used to write its logs
    std::string name;                        // last component of the input folder's path
    platform::AppendFile logFile;            // open only inside Log
    std::shared_ptr<CPlateRecords> records;  // state of the logs from one entry to the next

    // The plate of a single file; its folder is not scanned.
    CPlate(const std::string& folder, CRunDriver* driver);
    // The plate of a folder, which is scanned for files of these types.
    CPlate(const std::string& folder, const std::vector<CFileTypeFilter>& fileTypes, CRunDriver* driver);
    virtual ~CPlate();
    CPlate(const CPlate&) = delete;
    CPlate& operator=(const CPlate&) = delete;

    // The settings of the run. Needs a driver that has its base caller set.
    const CRunSettings& Settings() const;
    // The samples that nothing may change; empty without a driver.
    const CInputSamples& InputSamples() const;
    // Replaces currentSample by the sample at `path`. 0 if that did not load.
    std::int32_t LoadSample(const std::string& path);

    // --- records/ ---

    // Appends `text` to basecall.log in the input folder and prints it. If the log cannot be opened the text is neither
    // logged nor printed; the first such loss gives a warning.
    void Log(const std::string& text);
    // Adds the path of a written file to log.xml in the input folder, under the section of that number (see
    // HtmlFile.h). If that fails the entry is lost; the first loss, and any lack of memory, gives a warning.
    void AddToMarkupLog(const std::string& path, std::int32_t section);
};
