// SPDX-License-Identifier: MIT
// The table of all rows, a tab-separated file.
//
// Its reader takes a cell for a number if it looks like one, else for a text, and removes the quotes at both ends of
// that. All texts are in quotes, so that a sample named 1e5 keeps its name and no line begins with "#". The page then
// formats each value as a number if it can, unless its column has a format that takes texts; and it takes commas for
// separators of thousands, which it draws as gaps.
#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "lanetools/samples/SampleRow.h"
#include "lanetools/summary/MultiqcSection.h"
#include "lanetools/summary/Reports.h"

namespace lanetools {

namespace {

using Json = nlohmann::ordered_json;

std::string Cell(const std::string& value) {
    std::string cell = "\"";
    for (const char c : Html(value))
        c == ',' ? cell += "&#44;" : cell += c;
    return cell + '"';
}

template <class Number>
std::string Cell(const std::optional<Number>& value) {
    return ValueText(value);
}

struct CColumnStyle {
    const char* name;
    const char* title;
    const char* description;
    const char* format;  // of numbers; none for texts
    bool isHidden;       // until the reader asks for it
};

constexpr CColumnStyle styles[] = {
    {"plate", "Plate", "Plate", nullptr, false},
    {"well", "Well", "Well", nullptr, false},
    {"sample", "Name", "Name of the sample", nullptr, false},
    {"file", "File", "Name of the file, without extension", nullptr, true},
    {"state", "State", "called, failed, missing or damaged", nullptr, false},
    {"reason", "Reason", "Why the call failed, or what is damaged", nullptr, false},
    {"caller", "Caller", "Base caller", nullptr, true},
    {"bases", "Bases", "Called bases", "{:,.0f}", false},
    {"good_start", "Good from", "First base of the good region, from 1", "{:,.0f}", true},
    {"good_length", "Good bases", "Bases of the good region", "{:,.0f}", false},
    {"q20", "Q20", "Bases of Phred 20 or more", "{:,.0f}", false},
    {"q30", "Q30", "Bases of Phred 30 or more", "{:,.0f}", true},
    {"crl", "CRL", "Longest run of bases whose window of 21 has a mean Phred of 20 or more", "{:,.0f}", false},
    {"trace_score", "Trace score", "Mean Phred of the good region", "{:,.1f}", false},
    {"signal", "Signal", "Height of a usual peak, in counts", "{:,.1f}", false},
    {"noise", "Noise", "Deviation of the noise, in counts", "{:,.1f}", true},
    {"raw_peak", "Raw peak", "Highest raw value of the four channels", "{:,.0f}", true},
    {"run_start", "Run start", "Start of the run, UTC", nullptr, true},
    {"mixed", "Mixed", "Places of the good region with a second letter of 0.33 or more of the strongest", "{:,.0f}",
     true},
    {"remark", "Remark", "Why the read is poor", nullptr, false},
    {"source", "Source", "Name of the file that the sample was imported from", nullptr, true},
};

// Columns with a value in some row.
std::set<std::string> FilledColumns(const std::vector<CSampleRow>& rows) {
    std::set<std::string> filled;
    for (const CSampleRow& row : rows)
        VisitColumns(row, [&](const char* name, const auto& value) {
            if (!ValueText(value).empty()) filled.insert(name);
        });
    return filled;
}

Json TableHeaders(const std::vector<CSampleRow>& rows) {
    const std::set<std::string> filled = FilledColumns(rows);
    Json headers = Json::object();  // see SampleJson
    for (const CColumnStyle& style : styles) {
        Json header{{"title", style.title},
                    {"description", style.description},
                    {"placement", headers.size()},
                    {"hidden", style.isHidden || !filled.contains(style.name)}};
        if (style.format)
            header.update({{"format", style.format}, {"min", 0}, {"scale", "Blues"}});
        else
            header.update({{"format", "{}"}, {"scale", false}});
        headers[style.name] = std::move(header);
    }
    return headers;
}

// A name for each row that no other row has: its file, with plate and caller where files repeat.
std::vector<std::string> RowNames(const std::vector<CSampleRow>& rows) {
    std::map<std::string, int> occurrences;
    for (const CSampleRow& row : rows)
        ++occurrences[row.file];
    std::set<std::string> used;
    std::vector<std::string> names;
    for (const CSampleRow& row : rows) {
        std::string name = row.file;
        if (occurrences[row.file] > 1) name = row.plate + " " + row.file + (row.caller.empty() ? "" : " " + row.caller);
        const std::string plain = name;
        for (int number = 2; !used.insert(name).second; ++number)
            name = plain + " (" + std::to_string(number) + ")";
        names.push_back(std::move(name));
    }
    return names;
}

}  // namespace

CReportFile MultiqcTable(const std::vector<CSampleRow>& rows) {
    const Json table{{"id", "lanetools_samples_table"},
                     {"namespace", "lanetools"},
                     {"table_title", "Samples"},
                     {"col1_header", "Row"},
                     {"no_beeswarm", true}};
    const Json section{{"section_name", "Samples"}, {"description", "One row per sample and base caller."},
                       {"plot_type", "table"},      {"file_format", "tsv"},
                       {"pconfig", table},          {"headers", TableHeaders(rows)}};
    CReportFile file{"lanetools_samples_mqc.tsv", "# " + SectionConfiguration("samples", section) + "\n"};
    file.text += "row";
    for (const std::string& column : ColumnNames())
        file.text += '\t' + column;
    file.text += '\n';
    const std::vector<std::string> names = RowNames(rows);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        file.text += Cell(names[i]);
        VisitColumns(rows[i], [&](const char*, const auto& value) { file.text += '\t' + Cell(value); });
        file.text += '\n';
    }
    return file;
}

}  // namespace lanetools
