// SPDX-License-Identifier: MIT
// What the sections of the MultiQC report have in common.
//
// A section is a file of custom content, whose first lines, in a comment, configure it as JSON. Bars and maps are drawn
// here as HTML: MultiQC would draw them with a library that is not free, and so is not in Debian, where such plots stay
// empty.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/summary/Reports.h"

namespace lanetools {

// UTF-8 text for a page: one line, escaped.
std::string Html(const std::string& text);

// The text of a section's configuration; all sections go under one heading.
std::string SectionConfiguration(const std::string& id, nlohmann::ordered_json configuration);

// A section of HTML, without its contents.
CReportFile HtmlSection(const std::string& id, const char* name, const char* description);

// The colour of a state in HTML.
const char* StateColor(SampleState state);

CReportFile MultiqcStates(const std::vector<CSampleRow>& rows);
CReportFile MultiqcTable(const std::vector<CSampleRow>& rows);
CReportFile MultiqcWells(const std::vector<CSampleRow>& rows);

}  // namespace lanetools
