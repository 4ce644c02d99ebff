// SPDX-License-Identifier: MIT
// One sample file with its traces. All operations are declared here; each is defined in the folder of the subsystem
// that it belongs to.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "samplestore/CapTrace.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/TraceFile.h"

class CBaseCaller;
class CDyeMatrix;
class CPlate;
namespace platform {
class Library;
}

// The kind of a file.
enum class SampleKind : std::int32_t {
    Raw = 0,
    Processed = 1,  // also any file that is not recognised
    Abif = 2,
    Scf = 3,
    Unreadable = 4,  // a ".rsd" or ".esd" file that cannot be read
};

// True for a path that ends in ".rsd" or ".esd" (case ignored).
bool HasSampleExtension(const std::string& path);
// A file below version 1.2 has no plate and no well, and often no sample name. Its file name has them: "xyzA01.rsd" is
// well A01 of the sample "xyz". Sets these fields of `info`; changes nothing for a newer file.
void NameByFile(CSampleInfo& info, const std::string& fileName, const std::string& plateName);

class CSampleFile {
  public:
    std::string fileName;   // with extension, without folder
    CSampleInfo info;       // the sample's description
    std::string baseOrder;  // 6 characters: letters of channels 1 to 4, "N" and a NUL; "ACTGN0" before Load
    std::unique_ptr<CTraceFile> rawTrace;
    CTraceFile* processedTrace = nullptr;  // the latest of processedTraces
    std::vector<std::unique_ptr<CTraceFile>> processedTraces;
    CPlate* plate;  // not owned; has the log and gives access to the settings

    // fileName becomes the last component of `path`. `plate` must outlive the sample.
    CSampleFile(std::string_view path, CPlate* plate);
    virtual ~CSampleFile();
    CSampleFile(const CSampleFile&) = delete;
    CSampleFile& operator=(const CSampleFile&) = delete;

    // --- samplestore/: loading ---

    // Loads the file at `path`, a processed sample if `processed` is not 0 and otherwise a raw one, and determines the
    // base order. Logs what it finds. 1 if loaded, else 0; the object stays valid in both cases.
    std::int32_t Load(const std::string& path, std::int32_t processed);
    // Makes a holder with an empty trace, owned by the sample. With `processed` 0 it becomes rawTrace, else it is added
    // to processedTraces and becomes processedTrace.
    CTraceFile* CreateProcessedTrace(const std::string& path, std::int32_t processed, CBaseCaller* caller);
    // Reads the holder's file into its trace and, with `readInfo`, into `info`. 1 on success, and also, with an empty
    // trace, for an SCF file and for a sample file that cannot be read; else 0.
    std::int32_t LoadProcessed(CTraceFile& holder, std::int32_t readInfo);
    // The kind of the file at `path`. Shows a box if it is named like a sample and cannot be opened.
    SampleKind CheckSampleKind(const std::string& path) const;
    // Loads the sample that an earlier run stored at the path of processedTrace, with its description. If the raw file
    // could not be read, the base order is taken from that description. False if the stored file has no trace; `info`
    // is then as it was before.
    bool LoadStored();

    // --- samplestore/: saving. 1 on success, else 0. The raw file is never changed. ---

    // Updates `info` from the holder's trace and stores both at the holder's path, as a copy of the raw file with the
    // scans and the description replaced. `procedureIndex` is the highest procedure that was allowed to run.
    std::int32_t SaveProcessedSample(CTraceFile& holder, std::int32_t procedureIndex);
    // Stores a placeholder with one scan and the reason of the failure in an ".fsd" file, and sets the holder's path to
    // it.
    std::int32_t SaveFailedSample(CTraceFile& holder);

    // --- plugins/ ---

    // Calls the bases with the library in `module`. `first` and `last` are raw scans, -1 for the library's choice;
    // `procedureIndex` is the highest procedure to run. Fills processedTrace and info.analysis. 1 on success, 0 on
    // failure.
    std::int32_t BaseCall(const platform::Library& module, CDyeMatrix& matrix, std::int32_t first, std::int32_t last,
                          std::int32_t procedureIndex);
    // Replaces the good region of processedTrace by the one that the user's quality settings give.
    void FindGoodRegion();

    // --- export/ ---

    // Path of an exported file: `sourcePath` without its last four characters, with the format's subfolder, which is
    // made if missing, and the extension ("seq", "txt", "abd", "scf", "fsd"). Empty if the subfolder cannot be made.
    std::string ExportPath(const std::string& sourcePath, const std::string& extension);
    // The letter to show for one base: the library's, or 'N' if there is no such base.
    char ExportLetter(const CProcessedTrace& trace, std::int32_t index) const;
    // Appends one FASTA record to `filePath` or, if that is empty, writes the sample's own file. 1 if a record was
    // written; 0 for a null holder or a failed sample.
    std::int32_t ExportFasta(CTraceFile* processed, const std::string& filePath, std::int32_t goodRegionOnly);
    // Writes the processed trace, its bases and the comments as an SCF file. 1, or 0 if the path could not be made.
    std::int32_t ExportScf(CTraceFile& processed);
    // Writes only the comments, for a sample whose base call failed. Writes nothing if the run skips failed samples.
    std::int32_t ExportFailedScf();
    // Writes the raw curves, the processed curves and the bases as an ABD file. 1 if the file is complete, else 0.
    std::int32_t ExportAbd(CTraceFile& processed, std::int32_t goodRegionOnly);
    // Writes only the raw curves and the description. With `skipFailedExports` writes nothing and gives 1.
    std::int32_t ExportFailedAbd(std::int32_t skipFailedExports);

    // --- records/ ---

    // Writes the text dump of a raw or processed trace. 1, or 0 if the path could not be made.
    std::int32_t ExportText(CTraceFile& holder);

  private:
    void ResolveBaseOrder(const std::string& fallbackOrder);
    void OrderFromDescription(const std::string& fallbackOrder);
    bool OrderFromNames();
    bool OrderFromLetters(bool forced);
    void OrderFromFallback(const std::string& fallbackOrder);
    void SetLetters(const std::string& order);
    void FinishBaseOrder();
    void NameChemistry();
};
