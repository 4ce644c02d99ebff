// SPDX-License-Identifier: MIT
#include "lanetools/export/TextFormats.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <vector>

#include "lanetools/samples/SampleRow.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

// As in "Wed May  1 10:20:30 2024", always UTC.
std::string CTimeText(std::int64_t seconds) {
    const std::time_t time = seconds;
    std::tm parts{};
    std::string text(64, '\0');
    gmtime_r(&time, &parts);
    text.resize(std::strftime(text.data(), text.size(), "%a %b %e %H:%M:%S %Y", &parts));
    return text;
}

// The trace is that of the program's SCF file, whose scans the peaks count.
std::string PhdComment(const CRead& read) {
    std::string text = "BEGIN_COMMENT\n\nCHROMAT_FILE: " + OneLine(read.row.file) + ".scf\n";
    if (!read.row.caller.empty()) text += "CALL_METHOD: " + OneLine(read.row.caller) + "\n";
    text += "QUALITY_LEVELS: 94\n";  // Phred values 0 to 93
    if (read.runStart != 0) text += "TIME: " + CTimeText(read.runStart) + "\n";
    text += "TRACE_ARRAY_MIN_INDEX: 0\n";
    text += "TRACE_ARRAY_MAX_INDEX: " + std::to_string(std::max(read.scans, std::int64_t{1}) - 1) + "\n";
    return text + "\nEND_COMMENT\n";
}

}  // namespace

std::string FastqText(const CRead& read) {
    std::string text = "@" + read.title + "\n" + read.letters + "\n+\n";
    for (const std::uint8_t phred : read.phreds)
        text += static_cast<char>('!' + phred);
    return text + "\n";
}

std::string FastaText(const CRead& read) {
    return ">" + read.title + "\n" + read.letters + "\n";
}

std::string QualText(const CRead& read) {
    std::string text = ">" + read.title + "\n";
    for (std::size_t i = 0; i < read.phreds.size(); ++i) {
        if (i > 0) text += ' ';
        text += std::to_string(read.phreds[i]);
    }
    return text + "\n";
}

std::string PhdText(const CRead& read) {
    std::string text = "BEGIN_SEQUENCE " + read.title + "\n\n" + PhdComment(read) + "\nBEGIN_DNA\n";
    for (std::size_t i = 0; i < read.letters.size(); ++i)
        text += std::string(1, read.letters[i]) + " " + std::to_string(read.phreds[i]) + " " +
                std::to_string(read.positions[i]) + "\n";
    return text + "END_DNA\n\nEND_SEQUENCE\n\n";
}

}  // namespace lanetools
