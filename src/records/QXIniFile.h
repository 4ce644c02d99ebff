// A sectioned text file: lines of tab-separated fields, grouped after lines that begin with a section's tag.
//
//   part of the file                      written as
//   ------------------------------------  --------------------------------------------------------------
//   head of a section with its own line   tag, CR LF
//   head of any other section             tag, two tabs; its first entry follows on the same line
//   entry                                 each field with two tabs after it, CR LF
//   section without entries               its head, CR LF
//
// Read back, fields lie between runs of tabs, without white space at their ends. A line that begins with a tag opens
// that section; lines before the first tag are dropped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ExchangedFile.h"
#include "samplestore/RuntimeClass.h"

// The entries of one section, each a list of fields. They are kept as the lines that they are in the file, since a log
// may have many thousands; entries are only ever added.
class CIniEntries {
  public:
    bool IsEmpty() const { return lines.empty(); }
    // All entries as the file has them.
    std::string_view Lines() const { return lines; }
    // An entry with this first field, and the further fields of `rest`, which stand between tabs; empty ones are left
    // out.
    void Add(std::string_view field, std::string_view rest = {});

  private:
    std::string lines;
};

struct CIniSection {
    std::string tag;
    CIniEntries entries;
    std::int32_t ownLine;  // 1 when the tag stands alone on its line
};

// Holds the file's contents from one turn at the file to the next, and reads it again only when somebody else has
// changed it. Any operation may throw std::bad_alloc; the object is of no use after that.
class CQXIniFile : public CObject {
  public:
    static const CRuntimeClass runtimeClass;

    std::string path;
    std::string text;                   // the whole file, while it is read
    std::vector<CIniSection> sections;  // in the order of the file

    const CRuntimeClass& GetRuntimeClass() const override;
    // Begins a turn at the file `filePath`, which is `path` from now on, and brings `sections` up to date. Makes the
    // file when it is not there; while others have it this waits, for 5 s at most (platform/ExchangedFile.h).
    platform::Error Open(const std::string& filePath);
    // Parses the file into `sections`. One that cannot be read leaves no sections at all.
    virtual void ReadSections();
    // Sets up empty sections.
    virtual void DefineSections() {}
    // Makes `sections` the new state of the file; the former one gets the name with ".temp" at its end. When that fails
    // a box says so, and the file stays as it is.
    void WriteSections();
    // Ends the turn.
    void Close() { file.End(); }

    // During a turn: true when the file is the one that this object wrote last; where the former state goes.
    bool IsOwn() const { return file.IsAsWritten(); }
    std::string FormerPath() const { return file.FormerPath(); }

  private:
    void Parse();
    CIniSection* FindSection(std::string_view tag);

    platform::ExchangedFile file;
    std::vector<std::size_t> written;  // sizes of the sections' lines in the file; none when that is not known
};
