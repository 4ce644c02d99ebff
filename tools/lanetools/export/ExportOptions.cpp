// SPDX-License-Identifier: MIT
#include "lanetools/export/ExportOptions.h"

#include <array>
#include <utility>

#include "lanetools/ExitCode.h"
#include "lanetools/samples/Phred.h"

namespace lanetools {

ReadFormat ParseFormat(const CExportOptions& options) {
    using enum ReadFormat;
    static constexpr std::array<std::pair<const char*, ReadFormat>, 6> formats{
        {{"fastq", Fastq}, {"fasta", Fasta}, {"qual", Qual}, {"phd", Phd}, {"sam", Sam}, {"bam", Bam}}};
    for (const auto& [name, format] : formats) {
        if (options.format != name) continue;
        if (format == Bam && options.gzip) throw CRefused("--gzip: bam is always compressed");
        if ((format == Sam || format == Bam) && options.mask)
            throw CRefused("--mask: " + options.format + " has no lower case; without --mask the bases are cut");
        return format;
    }
    throw CRefused("--format: '" + options.format + "' is none of fastq, fasta, qual, phd, sam and bam");
}

CReadRules ParseRules(const CExportOptions& options) {
    if (options.per != "sample" && options.per != "plate" && options.per != "run")
        throw CRefused("--per: '" + options.per + "' is none of sample, plate and run");
    if (options.files && options.per != "sample") throw CRefused("--files: only --per sample has files to name");
    if (options.cap > largestPhred) throw CRefused("--cap: the highest Phred value is 93");
    if (!(options.adapterMismatch >= 0 && options.adapterMismatch < 1))
        throw CRefused("--adapter-mismatch: the part must be 0 or more and below 1");
    CReadRules rules{ParseTrim(options.trim), std::nullopt, options.mixed, options.mask, options.cap,
                     options.minLength};
    if (options.adapter) rules.adapter.emplace(*options.adapter, options.adapterMismatch);
    return rules;
}

}  // namespace lanetools
