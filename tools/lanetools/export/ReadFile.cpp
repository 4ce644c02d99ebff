// SPDX-License-Identifier: MIT
#include "lanetools/export/ReadFile.h"

#include <htslib/bgzf.h>
#include <htslib/sam.h>

#include <cerrno>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "lanetools/export/TextFormats.h"
#include "lanetools/export/Title.h"
#include "lanetools/samples/SampleRow.h"
#include "lanetools/system/Interrupt.h"
#include "platform/AtomicFile.h"
#include "platform/Error.h"

namespace lanetools {

namespace {

// If a call of htslib failed without a reason of the system, it was given data that it does not take.
void Require(bool isDone, const std::string& path) {
    if (isDone) return;
    throw std::runtime_error(path + ": " + platform::Error(errno != 0 ? errno : EINVAL).Text());
}

template <auto close>
struct Closer {
    template <class Thing>
    void operator()(Thing* thing) const {
        close(thing);
    }
};
using TextFile = std::unique_ptr<BGZF, Closer<bgzf_close>>;
using AlignmentFile = std::unique_ptr<samFile, Closer<hts_close>>;
using Header = std::unique_ptr<sam_hdr_t, Closer<sam_hdr_destroy>>;
using Record = std::unique_ptr<bam1_t, Closer<bam_destroy1>>;

// Writes the text of each read to the file `temporary`; errors name `path`.
template <class ToText>
void WriteTexts(const std::string& temporary, const std::string& path, bool gzip, std::span<const CRead> reads,
                ToText toText) {
    TextFile file(bgzf_open(temporary.c_str(), gzip ? "w" : "wu"));
    Require(file != nullptr, path);
    for (const CRead& read : reads) {
        CheckInterrupt();
        const std::string text = toText(read);
        Require(bgzf_write(file.get(), text.data(), text.size()) == std::ssize(text), path);
    }
    Require(bgzf_close(file.release()) == 0, path);
}

// Returns a field of a header line; empty for an empty value.
std::string Field(const char* tag, const std::string& value) {
    return value.empty() ? "" : std::string("\t") + tag + ":" + SamText(value);
}

std::string HeaderText(std::span<const CRead> reads) {
    std::string text = "@HD\tVN:1.6\tSO:unsorted\n";
    for (const CRead& read : reads) {
        const std::string unit =
            read.row.plate.empty() || read.row.well.empty() ? "" : read.row.plate + "." + read.row.well;
        text += "@RG" + Field("ID", read.title) + Field("SM", read.row.sample) + Field("LB", read.row.plate) +
                Field("PU", unit) + Field("DS", read.row.caller) + Field("DT", read.row.runStart) + "\n";
    }
    return text + "@PG\tID:lanetools\tPN:lanetools\tVN:" LANEWRIGHT_VERSION "\n";
}

bool Fill(bam1_t* record, const CRead& read) {
    return bam_set1(record, read.title.size(), read.title.c_str(), BAM_FUNMAP, -1, -1, 0, 0, nullptr, -1, -1, 0,
                    read.letters.size(), read.letters.c_str(), reinterpret_cast<const char*>(read.phreds.data()),
                    0) >= 0 &&
           bam_aux_update_str(record, "RG", static_cast<int>(read.title.size()) + 1, read.title.c_str()) == 0;
}

void WriteAlignments(const std::string& temporary, const std::string& path, const char* mode,
                     std::span<const CRead> reads) {
    AlignmentFile file(hts_open(temporary.c_str(), mode));
    Require(file != nullptr, path);
    const std::string text = HeaderText(reads);
    const Header header(sam_hdr_parse(text.size(), text.c_str()));
    Require(header != nullptr && sam_hdr_write(file.get(), header.get()) == 0, path);
    const Record record(bam_init1());
    for (const CRead& read : reads) {
        CheckInterrupt();
        Require(record != nullptr && Fill(record.get(), read), path);
        Require(sam_write1(file.get(), header.get(), record.get()) >= 0, path);
    }
    Require(hts_close(file.release()) == 0, path);
}

}  // namespace

void WriteReads(const std::string& path, ReadFormat format, bool gzip, std::span<const CRead> reads) {
    platform::AtomicFile file;
    if (const platform::Error error = file.Open(path)) throw std::runtime_error(path + ": " + error.Text());
    const std::string& temporary = file.TemporaryName();
    errno = 0;
    switch (format) {
        case ReadFormat::Fastq:
            WriteTexts(temporary, path, gzip, reads, FastqText);
            break;
        case ReadFormat::Fasta:
            WriteTexts(temporary, path, gzip, reads, FastaText);
            break;
        case ReadFormat::Qual:
            WriteTexts(temporary, path, gzip, reads, QualText);
            break;
        case ReadFormat::Phd:
            WriteTexts(temporary, path, gzip, reads, PhdText);
            break;
        case ReadFormat::Sam:
            WriteAlignments(temporary, path, gzip ? "wz" : "w", reads);
            break;
        case ReadFormat::Bam:
            WriteAlignments(temporary, path, "wb", reads);
            break;
    }
    if (const platform::Error error = file.Commit()) throw std::runtime_error(path + ": " + error.Text());
}

}  // namespace lanetools
