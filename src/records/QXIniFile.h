// A sectioned text file: lines of tab-separated fields, grouped behind lines that begin with a section's tag.
//
//   part of the file                      written as
//   ------------------------------------  --------------------------------------------------------------
//   head of a section with its own line   tag, CR LF
//   head of any other section             tag, two tabs; its first entry follows on the same line
//   entry                                 each field with two tabs behind it, CR LF
//   section without entries               its head, CR LF
//
// Read back, fields lie between runs of tabs, without white space at their ends. A line that begins with a tag opens
// that section; lines before the first tag are dropped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Files.h"
#include "samplestore/RuntimeClass.h"

// The fields of one line.
using CIniEntry = std::vector<std::string>;

struct CIniSection {
    std::string tag;
    std::vector<CIniEntry> entries;
    std::int32_t ownLine;  // 1 when the tag stands alone on its line
};

class CQXIniFile : public CObject {
  public:
    static const CRuntimeClass runtimeClass;

    std::string path;
    std::string text;                   // the whole file, as read or as built for writing
    std::vector<CIniSection> sections;  // in the order of the file

    const CRuntimeClass& GetRuntimeClass() const override;
    // Opens `filePath` and keeps it as `path`.
    platform::Error Open(const std::string& filePath, platform::OpenMode mode);
    // Parses the open file into `sections` and closes it. A file that cannot be read leaves no sections at all.
    virtual void ReadSections();
    // Sets up empty sections.
    virtual void DefineSections() {}
    // Replaces the file by a new one made from `sections`; the former one gets the name with ".temp" at its end. Where
    // that is not possible (a link, a folder that cannot be written to) a copy becomes the ".temp" and the file is
    // rewritten in place. Without the copy the file stays as it is, after a box; while the file cannot be opened it is
    // tried again for 5 s, then the writing is given up silently.
    void WriteSections();

  private:
    bool ReadText();
    void Parse();
    CIniSection* FindSection(std::string_view tag);
    void BuildText();
    platform::Error Replace(const std::string& former);
    bool OpenForWriting();
    bool WriteText();

    platform::File file;
};
