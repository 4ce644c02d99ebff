// One plate during a run: a plate folder, or the folder of a single sample file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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
    std::string outputFolder;                    // where this plate's output goes with the current base caller
    CRunDriver* driver;                          // not owned; may be null for a plate that is only written records of
    std::string name;                            // last component of the input folder's path
    platform::AppendFile logFile;                // open only inside Log
    std::shared_ptr<CPlateRecords> records;      // of earlier entries of the logs

    // The plate of a single file: its folder is not scanned.
    CPlate(const std::string& folder, CRunDriver* driver);
    // Scans `folder`.
    CPlate(const std::string& folder, const std::vector<CFileTypeFilter>& fileTypes, CRunDriver* driver);
    virtual ~CPlate();
    CPlate(const CPlate&) = delete;
    CPlate& operator=(const CPlate&) = delete;

    // The settings of the run; needs a driver with its base caller set.
    const CRunSettings& Settings() const;
    // The samples that nothing may change; none of a plate without a driver.
    const CInputSamples& InputSamples() const;
    // Replaces currentSample by the sample at `path`. 0 if that did not load.
    std::int32_t LoadSample(const std::string& path);

    // --- records/ ---

    // Appends `text` to basecall.log in the input folder and prints it; a log that cannot be opened loses both. The
    // first loss is warned of.
    void Log(const std::string& text);
    // Enters a written file in log.xml in the input folder, under the section of that number (see HtmlFile.h). A log
    // that cannot be had loses the entry, and the first loss is warned of; so is a lack of memory.
    void AddToMarkupLog(const std::string& path, std::int32_t section);
};
