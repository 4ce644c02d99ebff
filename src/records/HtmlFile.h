// The mark-up log of a plate, "log.xml": a list of the files written, grouped by kind between tags. Despite its name it
// is no XML but a sectioned text file.
#pragma once

#include <string>

#include "records/QXIniFile.h"

// Numbers of the sections that hold entries, an entry being the full path of a file.
//
//   0 <log>    1 <files>                      13 </log>   12 </files>
//   2 <esd>    processed and failed samples    3 </esd>
//   4 <abd>    ABD files                       5 </abd>
//   6 <scf>    SCF files                       7 </scf>
//   8 <fasta>  FASTA files                     9 </fasta>
//  10 <txt>    text dumps                     11 </txt>
namespace markup {
constexpr std::int32_t processedSection = 2;
constexpr std::int32_t abdSection = 4;
constexpr std::int32_t scfSection = 6;
constexpr std::int32_t fastaSection = 8;
constexpr std::int32_t textSection = 10;
}  // namespace markup

class CHtmlFile : public CQXIniFile {
  public:
    static const CRuntimeClass runtimeClass;

    CHtmlFile() = default;
    // Opens the file and reads it. Without success `sections` is empty.
    CHtmlFile(const std::string& filePath, platform::OpenMode mode);

    const CRuntimeClass& GetRuntimeClass() const override;
    void DefineSections() override;
};
