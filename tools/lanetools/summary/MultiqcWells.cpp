// SPDX-License-Identifier: MIT
// A map of the wells for each plate and caller.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/samples/Well.h"
#include "lanetools/summary/MultiqcSection.h"
#include "lanetools/summary/Reports.h"

namespace lanetools {

namespace {

// From nearly white, for 0, to a blue on which black text can still be read, for `most`.
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
        if (IsBeyond96(well)) rows = 16, columns = 24;
        const CSampleRow*& held = wells[well];
        if (!held || row.q20.value_or(-1) > held->q20.value_or(-1)) held = &row;
    }
    void AddIfFree(const CWell& well, const CSampleRow& row) {
        if (!wells.contains(well)) Add(well, row);
    }
    // `most` is the value of the darkest blue.
    std::string Table(std::int64_t most) const {
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
        if (row.state != SampleState::Called) return WellCell(StateColor(row.state), title, state);
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

}  // namespace

CReportFile MultiqcWells(const std::vector<CSampleRow>& rows) {
    CReportFile file = HtmlSection("wells", "Wells", "Bases of Phred 20 or more, by well.");
    std::int64_t most = 0;
    for (const CSampleRow& row : rows)
        most = std::max(most, row.q20.value_or(0));
    const CWellMaps maps = WellMaps(rows);
    if (maps.empty()) file.text += "<p>No sample records its well.</p>\n";
    for (const auto& [key, map] : maps) {
        const std::string name = key.second.empty() ? key.first : key.first + ", " + key.second;
        file.text += "<h4>" + Html(name) + "</h4>\n" + map.Table(most);
    }
    return file;
}

}  // namespace lanetools
