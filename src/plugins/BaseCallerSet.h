// SPDX-License-Identifier: MIT
// The base-caller libraries of a run, with its settings and its operations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "config/RunSettings.h"
#include "plugins/BaseCaller.h"
#include "plugins/DyeMatrix.h"

class CPlate;
class CRunDriver;
class CSampleFile;

class CBaseCallerSet : public CRunSettings {
  public:
    CBaseCaller* currentCaller = nullptr;               // one of `callers`; null before the first selection
    std::vector<std::unique_ptr<CBaseCaller>> callers;  // in the order of the settings
    std::vector<std::string> sampleSwitches;            // names of the operations to run on every sample, in order
    CRunDriver* driver;                                 // not owned
    std::unique_ptr<CDyeMatrix> dyeMatrix;              // null until ReadDyeMatrix

    // Reads the General settings unless the run is unattended. `driver` must outlive the set.
    explicit CBaseCallerSet(CRunDriver* driver);
    virtual ~CBaseCallerSet();
    CBaseCallerSet(const CBaseCallerSet&) = delete;
    CBaseCallerSet& operator=(const CBaseCallerSet&) = delete;

    void AddSwitch(std::string_view name) { sampleSwitches.emplace_back(name); }
    void SetFastaFile(std::string_view path) { fastaFile = path; }
    void SetBaseOrder(std::string_view order) { baseOrder = order; }

    // --- config/ ---

    // Reads section "General" of the analysis settings into the run settings. Always 1; nothing in it is an error.
    std::int32_t ReadGeneralSettings();

    // --- plugins/: binding. Non-zero on success; failures are reported before they return. ---

    // Reads the list of libraries and selects `file` or, if that is empty or cannot be selected, the default.
    std::int32_t BindCallers(const std::string& file);
    // For unattended runs: adds one library, listed or not, and tests that it loads.
    std::int32_t BindOneCaller(const std::string& file);
    // Loads the entry with this file name (case ignored) and makes it current.
    std::int32_t SelectCaller(const std::string& file);
    // Fills `callers` from the settings.
    std::int32_t ReadCallerList();
    // True when neither is empty nor in the list already (case-sensitive).
    bool IsNewCaller(const std::string& file, const std::string& name) const;
    // Loads entry `i`, releases the current library if it is another one, and makes the entry current.
    std::int32_t BindIndex(std::size_t i);
    // Selects the default named in the settings or, if that is not in the list, the first entry.
    std::int32_t BindDefaultCaller();
    // Index of the entry with this display name (case ignored); 0, after a report, if there is none.
    std::size_t FindCallerByName(const std::string& text);
    // Reads the dye matrix file. Without one, or if it is damaged, the matrix is the identity; a damaged file gives a
    // warning.
    void ReadDyeMatrix();

    // --- run/: processing samples ---

    // Processes all samples of a plate with the current caller. 0 if the output folder cannot be made, else 1.
    std::int32_t ProcessPlate(CPlate& plate);
    // Makes the plate's output folder for the current caller and sets plate.outputFolder. 0 if it cannot be made, else
    // 1.
    std::int32_t PreparePlate(CPlate& plate);
    // Runs the operations of sampleSwitches on one sample. `firstScan` and `lastScan` are raw scans, -1 for the
    // library's choice. 1 if no base call failed and the last operation that has a result succeeded.
    std::int32_t ProcessSample(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan);
    // Path of the FASTA file for all samples of a plate, in the plate's output folder. Empty if its subfolder cannot be
    // made.
    std::string PlateFastaFile(const CPlate& plate) const;
    // Path of the FASTA file for the whole run.
    std::string RunFastaFile() const;
    // Calls the bases of one sample and stores the result. Non-zero if both succeeded.
    std::int32_t BaseCallSample(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan);

  private:
    // The result of the latest operation on a sample that has one, and whether its base call failed.
    struct SampleState {
        std::int32_t result = 1;
        bool failed = false;
    };
    // Loads the calls that an earlier run stored for the sample, or calls its bases if there are none.
    void StepBaseCall(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan, SampleState& state);
    // Runs the operation named `step`. An unknown one gives a warning and the result 0.
    void StepExport(const std::string& step, CSampleFile& sample, SampleState& state);
};
