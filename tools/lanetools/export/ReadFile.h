// SPDX-License-Identifier: MIT
// Files of reads.
//
//   fastq, fasta  a title and a line of letters; fastq with a line of Phred characters
//   qual          a title and a line of Phred values
//   phd           a block per read, with a line per base: letter, Phred value, scan of the trace
//   sam, bam      unaligned reads, with a read group per read
//
// Compression, SAM and BAM are htslib's. Its writer of FASTQ and FASTA is not used: it takes reads from BAM records,
// which have no lower case (masked bases) and no titles above 254 characters.
#pragma once

#include <span>
#include <string>

#include "lanetools/export/Read.h"

namespace lanetools {

enum class ReadFormat { Fastq, Fasta, Qual, Phd, Sam, Bam };

// Writes a file that appears whole, and replaces a file of that name. `gzip` compresses it in blocks, which gzip reads
// as one file, and stores no time; not for Bam, which is always compressed. Titles of Sam and Bam are such as SamTitle
// gives. Throws std::runtime_error with the path and the reason, and CInterrupted.
void WriteReads(const std::string& path, ReadFormat format, bool gzip, std::span<const CRead> reads);

}  // namespace lanetools
