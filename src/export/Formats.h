// SPDX-License-Identifier: MIT
// The formats of a sample's files: one table, with a row for everything that the program knows about a format.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "records/Messages.h"

class CSampleFile;

enum class Format { Sample, Abd, Scf, Fasta, Text, Count };

struct CFormat {
    std::string_view extension;     // without its dot
    std::string_view subfolder;     // below the folder of the processed samples; empty for files of that folder
    bool mayGoWithout;              // the extension is left out if the user asks for that
    std::string_view tag;           // of its section of log.xml
    std::optional<MessageId> done;  // the log text for a file that was written, with its path as argument
};

// In the order of `Format`. The paths of processed samples are not made from this table, so the extension in their row
// is that of the placeholders for failed samples.
inline constexpr std::array formats = {
    CFormat{"fsd", "", false, "esd", std::nullopt},
    CFormat{"abd", "ABD", true, "abd", MessageId::AbdExported},
    CFormat{"scf", "SCF", true, "scf", MessageId::ScfExported},
    CFormat{"seq", "FASTA", false, "fasta", MessageId::FastaExported},
    CFormat{"txt", "Text", false, "txt", std::nullopt},
};
static_assert(formats.size() == static_cast<std::size_t>(Format::Count), "one row for each Format");

// Number of the format's section of log.xml (see HtmlFile.h).
constexpr std::int32_t SectionOf(Format format) {
    constexpr std::int32_t firstSection = 2, sectionsEach = 2;
    return firstSection + sectionsEach * static_cast<std::int32_t>(format);
}

// False, after a warning, if writing a file to `path` would replace a sample of the input.
bool IsTargetFree(const CSampleFile& sample, const std::string& path);
// Records in the plate's log and in its log.xml that a file of the sample was written. A text dump is recorded even if
// it could not be written (`isWritten` is false).
void RecordOutput(const CSampleFile& sample, Format format, const std::string& path, bool isWritten = true);
