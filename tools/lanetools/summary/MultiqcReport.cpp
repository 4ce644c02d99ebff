// Custom content of MultiQC: tab-separated files whose first lines, after "#", configure the section as JSON.
//
// What its reader makes of a cell: a number when it looks like one, else a text, whose quotes at both ends it removes.
// All texts stand in quotes, so that a sample named 1e5 keeps its name and none begins with "#". Sections go into a
// page as they are, so texts are escaped as HTML.
#include <algorithm>
#include <charconv>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <utility>

#include "lanetools/summary/PlateStates.h"
#include "lanetools/summary/Reports.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

using Json = nlohmann::ordered_json;

// `from` as `to` wherever it occurs.
void Replace(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string Html(const std::string& text) {
    std::string html = OneLine(text);
    constexpr std::pair<std::string_view, std::string_view> replacements[] = {
        {"&", "&amp;"},       {"<", "&lt;"},         {">", "&gt;"},
        {"\"", "&quot;"},     {"\xE2\x80\xA8", " "},  // line and paragraph separators end a line for the reader
        {"\xE2\x80\xA9", " "}};
    for (const auto& [from, to] : replacements)
        Replace(html, from, to);
    return html;
}

std::string Cell(const std::string& value) {
    return '"' + Html(value) + '"';
}

template <class Number>
std::string Cell(const std::optional<Number>& value) {
    return ValueText(value);
}

// All sections go under one heading.
std::string Header(const std::string& id, Json configuration) {
    configuration["id"] = multiqcPrefix + id;
    configuration["parent_id"] = "lanetools";
    configuration["parent_name"] = "Lanewright";
    configuration["parent_description"] = "Base calls as lanetools summary finds them.";
    configuration["file_format"] = "tsv";
    return "# " + configuration.dump() + "\n";
}

std::string FileName(const std::string& id) {
    return multiqcPrefix + id + multiqcSuffix;
}

// --- Bars of states

CReportFile States(const std::vector<CSampleRow>& rows) {
    const Json categories{{"called", {{"name", "Called"}, {"color", "#3a923a"}}},
                          {"failed", {{"name", "Failed"}, {"color", "#e1812c"}}},
                          {"missing", {{"name", "Missing"}, {"color", "#9a9a9a"}}},
                          {"damaged", {{"name", "Damaged"}, {"color", "#c03d3e"}}}};
    CReportFile file{FileName("states"),
                     Header("states", {{"section_name", "States"},
                                       {"description", "Samples of each plate by state."},
                                       {"plot_type", "bargraph"},
                                       {"categories", categories},
                                       {"pconfig", {{"title", "Samples by state"}, {"ylab", "Samples"}}}})};
    file.text += "plate\tcalled\tfailed\tmissing\tdamaged\n";
    for (const auto& [plate, counts] : PlateStates(rows)) {
        file.text += Cell(plate.empty() ? std::string("(no name)") : plate);
        for (const std::size_t count : {counts.called, counts.failed, counts.missing, counts.damaged})
            file.text += '\t' + std::to_string(count);
        file.text += '\n';
    }
    return file;
}

// --- Table of samples

struct CColumnStyle {
    const char* name;
    const char* title;
    const char* description;
    const char* format;  // of numbers; none for texts
    bool isHidden;
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
    {"signal", "Signal", "Mean signal over zones and channels", "{:,.1f}", false},
    {"noise", "Noise", "Mean noise over zones and channels", "{:,.1f}", true},
    {"raw_peak", "Raw peak", "Highest raw value of the four channels", "{:,.0f}", true},
    {"run_start", "Run start", "Start of the run, UTC", nullptr, true},
};

Json TableHeaders() {
    Json headers;
    for (const CColumnStyle& style : styles) {
        Json header{{"title", style.title}, {"description", style.description}, {"hidden", style.isHidden}};
        if (style.format)
            header.update({{"format", style.format}, {"min", 0}, {"scale", "Blues"}});
        else
            header["scale"] = false;
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

CReportFile Table(const std::vector<CSampleRow>& rows) {
    CReportFile file{
        FileName("samples"),
        Header(
            "samples",
            {{"section_name", "Samples"},
             {"description", "One row per sample and base caller."},
             {"plot_type", "table"},
             {"pconfig",
              {{"namespace", "lanetools"}, {"table_title", "Samples"}, {"col1_header", "Row"}, {"no_beeswarm", true}}},
             {"headers", TableHeaders()}})};
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

// --- Maps of wells

struct CWell {
    std::size_t row, column;  // from 0
};

// "B07" or "B7"; nothing for what lies on no plate of 24 x 16 wells, the largest.
std::optional<CWell> ParseWell(const std::string& text) {
    constexpr std::size_t rows = 16, columns = 24;
    const std::size_t row = text.empty() ? rows : static_cast<std::size_t>((text[0] & ~0x20) - 'A');
    std::size_t number = 0;
    const char* end = text.data() + text.size();
    if (row >= rows || std::from_chars(text.data() + 1, end, number).ptr != end) return std::nullopt;
    if (number < 1 || number > columns) return std::nullopt;
    return CWell{row, number - 1};
}

struct CWellMap {
    std::size_t rows = 8, columns = 12;
    std::map<std::pair<std::size_t, std::size_t>, std::int64_t> values;  // by row and column

    void Add(const CWell& well, std::int64_t value) {
        if (well.row >= 8 || well.column >= 12) rows = 16, columns = 24;
        auto& held = values[{well.row, well.column}];
        held = std::max(held, value);
    }
};

CReportFile WellMap(std::size_t number, const std::string& plate, const std::string& caller, const CWellMap& map) {
    const std::string id = "wells_" + std::to_string(number);
    const std::string name = Html(plate) + (caller.empty() ? "" : ", " + Html(caller));
    CReportFile file{
        FileName(id),
        Header(id, {{"section_name", "Wells of " + name},
                    {"description", "Q20 bases of each well; 0 also where nothing is called, or no sample."},
                    {"plot_type", "heatmap"},
                    {"pconfig",
                     {{"title", "Q20 bases: " + name},
                      {"xTitle", "Column"},
                      {"yTitle", "Row"},
                      {"min", 0},
                      {"square", false},
                      {"reverseColors", false},
                      {"decimalPlaces", 0}}}})};
    file.text += "well";
    for (std::size_t column = 1; column <= map.columns; ++column)
        file.text += "\t\"" + std::to_string(column) + '"';
    file.text += '\n';
    for (std::size_t row = 0; row < map.rows; ++row) {
        file.text += std::string("\"") + static_cast<char>('A' + row) + '"';
        for (std::size_t column = 0; column < map.columns; ++column) {
            const auto found = map.values.find({row, column});
            file.text += '\t' + std::to_string(found == map.values.end() ? 0 : found->second);
        }
        file.text += '\n';
    }
    return file;
}

void AddWellMaps(const std::vector<CSampleRow>& rows, std::vector<CReportFile>& files) {
    std::map<std::pair<std::string, std::string>, CWellMap> maps;  // by plate and caller
    for (const CSampleRow& row : rows) {
        const auto well = ParseWell(row.well);
        // A missing sample has no caller, and so no map of its own.
        if (well && row.state == SampleState::Called) maps[{row.plate, row.caller}].Add(*well, row.q20.value_or(0));
    }
    std::size_t number = 0;
    for (const auto& [key, map] : maps)
        files.push_back(WellMap(++number, key.first, key.second, map));
}

}  // namespace

std::vector<CReportFile> MultiqcReport(const std::vector<CSampleRow>& rows) {
    std::vector<CReportFile> files{States(rows), Table(rows)};
    AddWellMaps(rows, files);
    return files;
}

}  // namespace lanetools
