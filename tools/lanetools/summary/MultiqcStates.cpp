// SPDX-License-Identifier: MIT
// Bars that show the states of each plate's samples.
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/samples/Summarize.h"
#include "lanetools/summary/MultiqcSection.h"
#include "lanetools/summary/PlateStates.h"
#include "lanetools/summary/Reports.h"

namespace lanetools {

namespace {

constexpr SampleState states[] = {SampleState::Called, SampleState::Failed, SampleState::Missing, SampleState::Damaged};

std::string Legend() {
    std::string html = "<p>";
    for (const SampleState state : states)
        html += std::string("<span style=\"background:") + StateColor(state) + "\">&emsp;</span> " + StateName(state) +
                "&emsp;";
    return html + "</p>\n";
}

// As wide as its share.
std::string Part(std::size_t count, SampleState state) {
    if (count == 0) return "";
    const std::string number = std::to_string(count);
    return "<div title=\"" + number + " " + StateName(state) + "\" style=\"flex:" + number +
           ";overflow:hidden;background:" + StateColor(state) + "\">&nbsp;" + number + "</div>";
}

std::string Bar(const std::string& plate, const CStateCounts& counts) {
    const std::size_t numbers[] = {counts.called, counts.failed, counts.missing, counts.damaged};
    std::string html = "<tr><td style=\"padding:2px 8px;white-space:nowrap\">" + Html(plate) +
                       "</td><td style=\"width:100%\"><div style=\"display:flex\">";
    for (std::size_t i = 0; i < std::size(states); ++i)
        html += Part(numbers[i], states[i]);
    return html + "</div></td></tr>\n";
}

}  // namespace

CReportFile MultiqcStates(const std::vector<CSampleRow>& rows) {
    CReportFile file = HtmlSection("states", "States", "Samples of each plate by state.");
    file.text += Legend() + "<table style=\"width:100%\">\n";
    for (const auto& [plate, counts] : PlateStates(rows))
        file.text += Bar(plate, counts);
    file.text += "</table>\n";
    return file;
}

}  // namespace lanetools
