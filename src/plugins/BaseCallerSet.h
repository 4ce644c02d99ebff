// The bound base-caller libraries with the settings and the operations of a run.
#pragma once

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
    CBaseCaller* currentCaller = nullptr;               // one of `callers`, none before the first selection
    std::vector<std::unique_ptr<CBaseCaller>> callers;  // in the order of the settings
    std::vector<std::string> sampleSwitches;            // the operations replayed for every sample, in order
    CRunDriver* driver;                                 // not owned
    std::unique_ptr<CDyeMatrix> dyeMatrix;              // made by the first ReadDyeMatrix

    // Reads the General settings unless the run is unattended. `driver` outlives the set.
    explicit CBaseCallerSet(CRunDriver* driver);
    virtual ~CBaseCallerSet();
    CBaseCallerSet(const CBaseCallerSet&) = delete;
    CBaseCallerSet& operator=(const CBaseCallerSet&) = delete;

    void AddSwitch(std::string_view name) { sampleSwitches.emplace_back(name); }
    void SetFastaFile(std::string_view path) { fastaFile = path; }
    void SetBaseOrder(std::string_view order) { baseOrder = order; }

    // --- config/ ---

    // Takes section "General" of the analysis settings over into the run settings. Always 1; nothing in it is an error.
    std::int32_t ReadGeneralSettings();

    // --- plugins/: binding. Non-zero for success; failures have been reported. ---

    // Reads the list of libraries and selects `file` or, if that is empty or not there, the default.
    std::int32_t BindCallers(const std::string& file);
    // Adds one library, listed or not, and tests that it loads; for unattended runs.
    std::int32_t BindOneCaller(const std::string& file);
    // Makes the entry with this file name (case ignored) current.
    std::int32_t SelectCaller(const std::string& file);
    // Fills `callers` from the settings.
    std::int32_t ReadCallerList();
    // True when neither is empty or stands in the list already (case counts).
    bool IsNewCaller(const std::string& file, const std::string& name) const;
    // Loads entry `i`, lets go of the current library if it is another one, and makes the entry current.
    std::int32_t BindIndex(std::size_t i);
    // Selects what the settings name as the default, or else the first entry.
    std::int32_t BindDefaultCaller();
    // Index of the entry with this display name (case ignored); 0 after a report when there is none.
    std::size_t FindCallerByName(const std::string& text);
    // Reads the dye matrix file; the identity stands in when there is none or it is damaged.
    void ReadDyeMatrix();

    // --- run/: the walk ---

    // All samples of a plate with the current caller. 0 if the output folder cannot be made, else 1.
    std::int32_t ProcessPlate(CPlate& plate);
    // Makes the plate's output folder for the current caller. 0 if it cannot be made, else 1.
    std::int32_t PreparePlate(CPlate& plate);
    // Replays sampleSwitches for one sample. 1 if no base call failed and the last operation that reports a result
    // succeeded.
    std::int32_t ProcessSample(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan);
    // The FASTA file of all samples of a plate, in the folder of their calls. Empty when its subfolder cannot be made.
    std::string PlateFastaFile(const CPlate& plate) const;
    // The FASTA file of the whole run.
    std::string RunFastaFile() const;
    // Calls and stores one sample; the result of the base call.
    std::int32_t BaseCallSample(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan);

  private:
    // How far a sample has come: the result of the latest operation that has one, and whether its base call failed.
    struct SampleState {
        std::int32_t result = 1;
        bool failed = false;
    };
    void StepBaseCall(CSampleFile& sample, std::int32_t firstScan, std::int32_t lastScan, SampleState& state);
    // An entry of sampleSwitches that is no operation is warned of, and its result is 0.
    void StepExport(const std::string& step, CSampleFile& sample, SampleState& state);
};
