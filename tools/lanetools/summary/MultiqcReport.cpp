// Custom content of MultiQC: files whose first lines, in a comment, configure a section as JSON.
//
// The table is a tab-separated file. What its reader makes of a cell: a number when it looks like one, else a text,
// whose quotes at both ends it removes. All texts stand in quotes, so that a sample named 1e5 keeps its name and none
// begins with "#".
//
// Bars and maps are drawn here as HTML. MultiQC would draw them with a library that is not free, and so is not in
// Debian: there such plots stay empty.
//
// Texts go into the page as they are, so they are escaped.
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

// The configuration of a section; all go under one heading.
std::string Configuration(const std::string& id, Json configuration) {
    configuration["id"] = "lanetools_" + id;
    configuration["parent_id"] = "lanetools";
    configuration["parent_name"] = "Lanewright";
    configuration["parent_description"] = "Base calls as lanetools summary finds them.";
    return configuration.dump();
}

CReportFile HtmlSection(const std::string& id, const char* name, const char* description) {
    const Json configuration{{"section_name", name}, {"description", description}};
    return {"lanetools_" + id + "_mqc.html", "<!--\n" + Configuration(id, configuration) + "\n-->\n"};
}

const char* Color(SampleState state) {
    switch (state) {
        case SampleState::Called:
            return "#4c8dc9";
        case SampleState::Failed:
            return "#f0a35e";
        case SampleState::Missing:
            return "#bdbdbd";
        case SampleState::Damaged:
            break;
    }
    return "#d9534f";
}

// --- Bars of states

constexpr SampleState states[] = {SampleState::Called, SampleState::Failed, SampleState::Missing, SampleState::Damaged};

std::string Legend() {
    std::string html = "<p>";
    for (const SampleState state : states)
        html +=
            std::string("<span style=\"background:") + Color(state) + "\">&emsp;</span> " + StateName(state) + "&emsp;";
    return html + "</p>\n";
}

// As wide as its share.
std::string Part(std::size_t count, SampleState state) {
    if (count == 0) return "";
    const std::string number = std::to_string(count);
    return "<div title=\"" + number + " " + StateName(state) + "\" style=\"flex:" + number +
           ";overflow:hidden;background:" + Color(state) + "\">&nbsp;" + number + "</div>";
}

std::string Bar(const std::string& plate, const CStateCounts& counts) {
    const std::size_t numbers[] = {counts.called, counts.failed, counts.missing, counts.damaged};
    std::string html = "<tr><td style=\"padding:2px 8px;white-space:nowrap\">" + Html(plate) +
                       "</td><td style=\"width:100%\"><div style=\"display:flex\">";
    for (std::size_t i = 0; i < std::size(states); ++i)
        html += Part(numbers[i], states[i]);
    return html + "</div></td></tr>\n";
}

CReportFile States(const std::vector<CSampleRow>& rows) {
    CReportFile file = HtmlSection("states", "States", "Samples of each plate by state.");
    file.text += Legend() + "<table style=\"width:100%\">\n";
    for (const auto& [plate, counts] : PlateStates(rows))
        file.text += Bar(plate, counts);
    file.text += "</table>\n";
    return file;
}

// --- Table of samples

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
    {"signal", "Signal", "Mean signal over zones and channels", "{:,.1f}", false},
    {"noise", "Noise", "Mean noise over zones and channels", "{:,.1f}", true},
    {"raw_peak", "Raw peak", "Highest raw value of the four channels", "{:,.0f}", true},
    {"run_start", "Run start", "Start of the run, UTC", nullptr, true},
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
    Json headers;
    for (const CColumnStyle& style : styles) {
        Json header{{"title", style.title},
                    {"description", style.description},
                    {"placement", headers.size()},
                    {"hidden", style.isHidden || !filled.contains(style.name)}};
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
    const Json table{{"id", "lanetools_samples_table"},
                     {"namespace", "lanetools"},
                     {"table_title", "Samples"},
                     {"col1_header", "Row"},
                     {"no_beeswarm", true}};
    const Json section{{"section_name", "Samples"}, {"description", "One row per sample and base caller."},
                       {"plot_type", "table"},      {"file_format", "tsv"},
                       {"pconfig", table},          {"headers", TableHeaders(rows)}};
    CReportFile file{"lanetools_samples_mqc.tsv", "# " + Configuration("samples", section) + "\n"};
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
    auto operator<=>(const CWell&) const = default;
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

// From nearly white, for 0, to a blue that black text can still be read on, for `most`.
std::string Blue(std::int64_t value, std::int64_t most) {
    const std::int64_t percent = most > 0 ? 100 * value / most : 0;
    const auto mix = [&](std::int64_t light, std::int64_t dark) {
        return std::to_string(light + (dark - light) * percent / 100);
    };
    return "rgb(" + mix(236, 90) + "," + mix(243, 155) + "," + mix(250, 213) + ")";
}

std::string WellCell(const std::string& background, const std::string& title, const std::string& text) {
    return "<td style=\"width:56px;height:24px;border:1px solid #fff;background:" + background + "\" title=\"" +
           Html(title) + "\">" + text + "</td>";
}

// The samples of a plate, called by one library.
class CWellMap {
  public:
    // Of two samples in one well the better stays.
    void Add(const CWell& well, const CSampleRow& row) {
        if (well.row >= 8 || well.column >= 12) rows = 16, columns = 24;
        const CSampleRow*& held = wells[well];
        if (!held || row.q20.value_or(-1) > held->q20.value_or(-1)) held = &row;
    }
    void AddIfFree(const CWell& well, const CSampleRow& row) {
        if (!wells.contains(well)) Add(well, row);
    }
    // `most` is the value of the darkest blue.
    std::string Html(std::int64_t most) const {
        std::string html = "<table style=\"font-size:11px;text-align:center\">\n<tr><th></th>";
        for (std::size_t column = 1; column <= columns; ++column)
            html += "<th style=\"text-align:center\">" + std::to_string(column) + "</th>";
        html += "</tr>\n";
        for (std::size_t row = 0; row < rows; ++row) {
            html += std::string("<tr><th>") + static_cast<char>('A' + row) + "&nbsp;</th>";
            for (std::size_t column = 0; column < columns; ++column)
                html += Cell({row, column}, most);
            html += "</tr>\n";
        }
        return html + "</table>\n";
    }

  private:
    std::string Cell(const CWell& well, std::int64_t most) const {
        const auto found = wells.find(well);
        if (found == wells.end()) return WellCell("#f4f4f4", "no sample", "");
        const CSampleRow& row = *found->second;
        const std::string state = StateName(row.state);
        const std::string title = row.well + " " + row.sample + " (" + row.file + "): " + state +
                                  (row.reason.empty() ? "" : ", " + row.reason);
        if (row.state != SampleState::Called) return WellCell(Color(row.state), title, state);
        return WellCell(Blue(row.q20.value_or(0), most), title, ValueText(row.q20));
    }

    std::size_t rows = 8, columns = 12;
    std::map<CWell, const CSampleRow*> wells;
};

using CWellMaps = std::map<std::pair<std::string, std::string>, CWellMap>;  // by plate and caller

// Shows a sample without a caller, as missing ones are, on each map of its plate where the well is free.
void AddToAll(CWellMaps& maps, const CWell& well, const CSampleRow& row) {
    auto map = maps.lower_bound({row.plate, ""});
    if (map == maps.end() || map->first.first != row.plate) map = maps.try_emplace({row.plate, std::string()}).first;
    for (; map != maps.end() && map->first.first == row.plate; ++map)
        map->second.AddIfFree(well, row);
}

CWellMaps WellMaps(const std::vector<CSampleRow>& rows) {
    CWellMaps maps;
    for (const CSampleRow& row : rows)
        if (const auto well = ParseWell(row.well); well && !row.caller.empty())
            maps[{row.plate, row.caller}].Add(*well, row);
    for (const CSampleRow& row : rows)
        if (const auto well = ParseWell(row.well); well && row.caller.empty()) AddToAll(maps, *well, row);
    return maps;
}

CReportFile Wells(const std::vector<CSampleRow>& rows) {
    CReportFile file = HtmlSection("wells", "Wells", "Bases of Phred 20 or more, by well.");
    std::int64_t most = 0;
    for (const CSampleRow& row : rows)
        most = std::max(most, row.q20.value_or(0));
    const CWellMaps maps = WellMaps(rows);
    if (maps.empty()) file.text += "<p>No sample records its well.</p>\n";
    for (const auto& [key, map] : maps) {
        const std::string name = key.second.empty() ? key.first : key.first + ", " + key.second;
        file.text += "<h4>" + Html(name) + "</h4>\n" + map.Html(most);
    }
    return file;
}

}  // namespace

std::vector<CReportFile> MultiqcReport(const std::vector<CSampleRow>& rows) {
    return {States(rows), Table(rows), Wells(rows)};
}

}  // namespace lanetools
