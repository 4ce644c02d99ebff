// SPDX-License-Identifier: MIT
// The row of one sample in the summary: 21 columns, which titles of exported reads can take up too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lanetools/samples/StoredSample.h"
#include "lanetools/samples/Unread.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

// Texts are UTF-8 and may hold control characters. A number that is unknown, or of a sample that is not called, is
// absent. Numbers with a fraction have one decimal.
struct CSampleRow {
    std::string plate, well, sample;
    std::string file;  // the stem
    SampleState state = SampleState::Missing;
    std::string reason, caller;
    std::optional<std::int64_t> bases;
    std::optional<std::int64_t> goodStart;  // counts from 1; absent without a good region
    std::optional<std::int64_t> goodLength;
    std::optional<std::int64_t> q20, q30;
    std::optional<std::int64_t> crl;
    std::optional<double> traceScore;
    std::optional<double> signal, noise;
    std::optional<std::int64_t> rawPeak;
    std::optional<std::int64_t> mixed;  // mixed places of the good region, see MixedPlaces.h
    std::string remark;                 // why a called read is poor, see Remark.h
    std::string runStart;               // "2024-05-01T10:20:30Z", empty for 0
    std::string source;                 // name of the file that the sample was imported from, if it was

    // No columns:
    std::string path;                               // of the stored sample, empty when missing
    std::string rawPath;                            // of the raw sample, empty when that is not known
    std::string outputFolder;                       // path; empty for a raw plate without output
    std::int32_t plateColumns = 12, plateRows = 8;  // wells of the plate
    Unread unread;                                  // of its files
};

// Calls visit(name, value) for each column in order; values are std::string, std::optional<std::int64_t> or
// std::optional<double>.
template <class Visit>
void VisitColumns(const CSampleRow& row, Visit visit) {
    visit("plate", row.plate);
    visit("well", row.well);
    visit("sample", row.sample);
    visit("file", row.file);
    visit("state", std::string(StateName(row.state)));
    visit("reason", row.reason);
    visit("caller", row.caller);
    visit("bases", row.bases);
    visit("good_start", row.goodStart);
    visit("good_length", row.goodLength);
    visit("q20", row.q20);
    visit("q30", row.q30);
    visit("crl", row.crl);
    visit("trace_score", row.traceScore);
    visit("signal", row.signal);
    visit("noise", row.noise);
    visit("raw_peak", row.rawPeak);
    visit("run_start", row.runStart);
    visit("mixed", row.mixed);
    visit("remark", row.remark);
    visit("source", row.source);
}

// The names of the columns, in order.
std::vector<std::string> ColumnNames();
// A value as text: "" for an absent one, one decimal for a fraction.
std::string ValueText(const std::string& value);
std::string ValueText(const std::optional<std::int64_t>& value);
std::string ValueText(const std::optional<double>& value);
// The text of one column, which may hold control characters; empty if no column has that name.
std::optional<std::string> ColumnText(const CSampleRow& row, std::string_view column);

// As a row shows it: all formats show the same number.
std::optional<double> OneDecimal(std::optional<double> value);

// The row of a stored sample. `plateFolder` names the plate where the sample does not. rawPeak is absent.
CSampleRow MakeRow(const CStoredSample& sample, const std::string& plateFolder);
// Fills what says which sample it is, from its description: plate to file but the stem, runStart, source
// and the plate's size.
void Identify(CSampleRow& row, const CSampleInfo& info, const std::string& plateFolder);
// The name of the plate's folder, as far as the name of the output folder shows it: "p1" for "p1_LC1_QX1". A code with
// "_" in it cannot be separated from the plate's name. Any other name is returned unchanged.
std::string PlateFolderOf(const std::string& outputFolderName);

}  // namespace lanetools
