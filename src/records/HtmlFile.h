// SPDX-License-Identifier: MIT
// The mark-up log of a plate, "log.xml": a list of the files written, grouped by kind between tags. Despite its name it
// is not XML but a text file with sections.
#pragma once

#include <string>

#include "records/QXIniFile.h"
#include "samplestore/RuntimeClass.h"

// An entry is the full path of a file. The sections by number (SectionOf gives those that hold entries):
//
//   0 <log>    1 <files>                      13 </log>   12 </files>
//   2 <esd>    processed and failed samples    3 </esd>
//   4 <abd>    ABD files                       5 </abd>
//   6 <scf>    SCF files                       7 </scf>
//   8 <fasta>  FASTA files                     9 </fasta>
//  10 <txt>    text dumps                     11 </txt>
class CHtmlFile : public CQXIniFile {
  public:
    static const CRuntimeClass runtimeClass;

    CHtmlFile() = default;
    // Opens the file as Open does. If that fails `sections` is empty.
    explicit CHtmlFile(const std::string& filePath);

    const CRuntimeClass& GetRuntimeClass() const override;
    void DefineSections() override;
};
