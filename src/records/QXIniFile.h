// SPDX-License-Identifier: MIT
// A sectioned text file: lines of tab-separated fields, grouped after lines that begin with a section's tag.
//
//   part of the file                      written as
//   ------------------------------------  --------------------------------------------------------------
//   head of a section with its own line   tag, CR LF
//   head of any other section             tag, two tabs; its first entry follows on the same line
//   entry                                 each field with two tabs after it, CR LF
//   section without entries               its head, CR LF
//
// When it is read back, fields are separated by runs of tabs and trimmed of white space. A line that begins with a tag
// starts that section; lines before the first tag are dropped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Error.h"
#include "platform/ExchangedFile.h"
#include "samplestore/RuntimeClass.h"

// The entries of one section, each a list of fields. They are kept as lines of the file, since a log may have many
// thousands of them and entries are only ever added.
class CIniEntries {
  public:
    bool IsEmpty() const { return lines.empty(); }
    // All entries as lines of the file.
    std::string_view Lines() const { return lines; }
    // Adds an entry with this first field and the tab-separated fields of `rest`; empty ones are skipped.
    void Add(std::string_view field, std::string_view rest = {});

  private:
    std::string lines;
};

struct CIniSection {
    std::string tag;
    CIniEntries entries;
    std::int32_t ownLine;  // 1 if the tag has a line to itself, else 0
};

// Keeps the contents of the file from one turn (Open to Close) to the next, and reads the file again only if somebody
// else has changed it. Any operation may throw std::bad_alloc; the object must not be used after that.
class CQXIniFile : public CObject {
  public:
    static const CRuntimeClass runtimeClass;

    std::string path;
    std::string text;                   // the whole file, while it is being read
    std::vector<CIniSection> sections;  // in the order of the file
    platform::Error readError;          // of the last ReadSections

    const CRuntimeClass& GetRuntimeClass() const override;
    // Begins a turn at the file `filePath`, sets `path` to it and brings `sections` up to date. Creates the file if it
    // does not exist. Waits up to 5 s while another process has the file (see platform/ExchangedFile.h for the errors).
    platform::Error Open(const std::string& filePath);
    // Parses the file into `sections`, which become empty if it cannot be read.
    virtual void ReadSections();
    // Sets up empty sections.
    virtual void DefineSections() {}
    // Writes `sections` as the new state of the file; the former state is kept under the name with ".temp" added. If
    // that fails a box reports it and the file stays as it is.
    void WriteSections();
    // Ends the turn.
    void Close() { file.End(); }

    // During a turn: true when the file is still as this object last wrote it, and the path for the former state.
    bool IsOwn() const { return file.IsAsWritten(); }
    std::string FormerPath() const { return file.FormerPath(); }

  private:
    void Parse();
    CIniSection* FindSection(std::string_view tag);

    platform::ExchangedFile file;
    std::vector<std::size_t> written;  // size of each section's lines in the file; empty when not known
};
