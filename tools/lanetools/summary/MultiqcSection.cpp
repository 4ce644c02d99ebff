// SPDX-License-Identifier: MIT
#include "lanetools/summary/MultiqcSection.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

// `from` as `to` wherever it occurs.
void Replace(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

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

std::string SectionConfiguration(const std::string& id, nlohmann::ordered_json configuration) {
    configuration["id"] = "lanetools_" + id;
    configuration["parent_id"] = "lanetools";
    configuration["parent_name"] = "Lanewright";
    configuration["parent_description"] = "Base calls as lanetools summary finds them.";
    return configuration.dump();
}

CReportFile HtmlSection(const std::string& id, const char* name, const char* description) {
    const nlohmann::ordered_json configuration{{"section_name", name}, {"description", description}};
    return {"lanetools_" + id + "_mqc.html", "<!--\n" + SectionConfiguration(id, configuration) + "\n-->\n"};
}

const char* StateColor(SampleState state) {
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

std::vector<CReportFile> MultiqcReport(const std::vector<CSampleRow>& rows) {
    return {MultiqcStates(rows), MultiqcTable(rows), MultiqcWells(rows)};
}

}  // namespace lanetools
