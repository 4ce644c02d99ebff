// One sample file with the traces made from it. The class is declared here once; its operations lie in the folder of
// the subsystem that each belongs to.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "samplestore/SampleInfo.h"
#include "samplestore/TraceFile.h"

class CBaseCaller;
class CDyeMatrix;
class CPlate;
namespace platform {
class Library;
}

// What kind of file a path names.
enum class SampleKind : std::int32_t {
    Raw = 0,
    Processed = 1,  // also any file that is not recognised
    Abif = 2,
    Scf = 3,
    Unreadable = 4,  // a ".rsd" or ".esd" file that cannot be read
};

// True for a path that ends in ".rsd" or ".esd" (case ignored).
bool HasSampleExtension(const std::string& path);

class CSampleFile {
  public:
    std::string fileName;   // with extension, no folder
    CSampleInfo info;       // the sample's description
    std::string baseOrder;  // 6 characters: the letters of channels 1 to 4, then "N" and a NUL ("ACTGN0" before Load)
    std::unique_ptr<CTraceFile> rawTrace;
    CTraceFile* processedTrace = nullptr;  // the latest of processedTraces
    std::vector<std::unique_ptr<CTraceFile>> processedTraces;
    CPlate* plate;  // not owned; gives the log, the plate's name and the run's settings

    // `path` may be a name or a path; fileName becomes its last component. `plate` outlives the sample.
    CSampleFile(std::string_view path, CPlate* plate);
    virtual ~CSampleFile();
    CSampleFile(const CSampleFile&) = delete;
    CSampleFile& operator=(const CSampleFile&) = delete;

    // --- samplestore/: loading ---

    // Reads the file at `path`, settles the base order and logs what it finds. 1 when loaded, 0 otherwise; the object
    // stays valid in both cases.
    std::int32_t Load(const std::string& path, std::int32_t processed);
    // Makes a holder with an empty trace: with `processed` 0 it becomes rawTrace, else it joins processedTraces and
    // becomes processedTrace. The sample owns it.
    CTraceFile* CreateProcessedTrace(const std::string& path, std::int32_t processed, CBaseCaller* caller);
    // Reads the holder's file into its trace and, with `readInfo`, into `info`. 1 or 0; 1 also for a file that cannot
    // be read as a sample, which leaves the trace empty.
    std::int32_t LoadProcessed(CTraceFile& holder, std::int32_t readInfo);
    SampleKind CheckSampleKind(const std::string& path) const;
    // Reads what an earlier run has stored under the path of processedTrace, with its description. Where the raw file
    // could not be read the base order follows from that description. False when there is no trace in it; the sample
    // is then as it was before.
    bool LoadStored();

    // --- samplestore/: saving; 1 on success, 0 otherwise. The raw file is never changed. ---

    // Stores the holder's trace, with `info`, at the holder's path: a copy of the raw file with the processed scans and
    // the new description. `info` is brought up to date.
    std::int32_t SaveProcessedSample(CTraceFile& holder, std::int32_t procedureIndex);
    // Stores a placeholder of one scan with the reason of the failure. The holder's path becomes that of the ".fsd"
    // file.
    std::int32_t SaveFailedSample(CTraceFile& holder);

    // --- plugins/ ---

    // One conversation with the library in `module`; `first` and `last` are raw scans, -1 leaves the choice to it.
    // Fills processedTrace and info.analysis. 1 on success, 0 on failure.
    std::int32_t BaseCall(const platform::Library& module, CDyeMatrix& matrix, std::int32_t first, std::int32_t last,
                          std::int32_t procedureIndex);
    // Replaces the good region of processedTrace by the one that follows from the user's settings.
    void FindGoodRegion();

    // --- export/ ---

    // Path of an exported file: `sourcePath` less its last four characters, with the format's subfolder (made when it
    // is missing) and extension ("seq", "txt", "abd", "scf", "fsd"). Empty when the subfolder cannot be made.
    std::string ExportPath(const std::string& sourcePath, const std::string& extension);
    // The letter to show for one base: as the library gave it, 'N' for a base that does not exist.
    char ExportLetter(const CProcessedTrace& trace, std::int32_t index) const;
    // Appends one FASTA record to `filePath`, or writes the sample's own file when that is empty. 1 if a record was
    // written; 0 for a null holder or a failed sample.
    std::int32_t ExportFasta(CTraceFile* processed, const std::string& filePath, std::int32_t goodRegionOnly);
    // Writes the processed trace, its bases and the comments as an SCF file. 1, or 0 when no path could be made.
    std::int32_t ExportScf(CTraceFile& processed);
    // The comments alone, for a sample whose base call failed; nothing at all when the run leaves failed samples out.
    std::int32_t ExportFailedScf();
    // Writes the raw and the processed curves and the bases as an ABD file. 1 if the file was closed in good order,
    // else 0.
    std::int32_t ExportAbd(CTraceFile& processed, std::int32_t goodRegionOnly);
    // The raw curves and the description alone; nothing, and 1, with `skipFailedExports`.
    std::int32_t ExportFailedAbd(std::int32_t skipFailedExports);

    // --- records/ ---

    // Writes the text dump of a raw or processed trace. 1, or 0 when no path could be made.
    std::int32_t ExportText(CTraceFile& holder);

  private:
    void ResolveBaseOrder(const std::string& fallbackOrder);
    void FollowDescription(const std::string& fallbackOrder);
    bool OrderFromNames();
    bool OrderFromLetters(bool forced);
    void OrderFromFallback(const std::string& fallbackOrder);
    void SetLetters(const std::string& order);
    void EndBaseOrder();
    void NameChemistry();
};
