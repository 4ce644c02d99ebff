// SPDX-License-Identifier: MIT
#include "lanetools/report/PlatePage.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "lanetools/report/QualityByPosition.h"
#include "lanetools/report/SampleJson.h"
#include "lanetools/system/Interrupt.h"
#include "lanetools/system/Progress.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

using Json = nlohmann::ordered_json;
namespace fs = std::filesystem;

std::string FolderOf(const CSampleRow& row) {
    return row.outputFolder.empty() ? fs::path(row.rawPath).parent_path().string() : row.outputFolder;
}

// The first text that is not empty, over all samples.
template <class TextOf>
std::string FirstText(const std::vector<CSampleRow>& rows, TextOf textOf) {
    for (const CSampleRow& row : rows)
        if (!textOf(row).empty()) return textOf(row);
    return "";
}

std::string Instrument(const Json& samples) {
    for (const Json& sample : samples)
        for (const Json& pair : sample["description"])
            if (pair[0] == "Instrument" || pair[0] == "Machine") return pair[1];
    return "";
}

Json UnreadJson(const Unread& unread) {
    Json json = Json::array();
    for (const auto& [path, reason] : Sorted(unread))
        json.push_back({ToUtf8(path), ToUtf8(reason)});
    return json;
}

Json PlateJson(const CPlateRows& plate, bool withRaw, Unread& unread) {
    CQualityByPosition quality;
    Json samples = Json::array();
    int rows = 0, columns = 0;
    CProgress progress("samples", plate.rows.size());
    for (const CSampleRow& row : plate.rows) {
        CheckInterrupt();
        samples.push_back(SampleJson(row, withRaw, quality, unread));
        rows = std::max(rows, row.plateRows);
        columns = std::max(columns, row.plateColumns);
        progress.Step();
    }
    const auto name = [](const CSampleRow& row) { return row.plate; };
    return {{"schema", 1},
            {"version", LANEWRIGHT_VERSION},
            {"plate", FirstText(plate.rows, name)},
            {"rows", rows},
            {"columns", columns},
            {"run_start", FirstText(plate.rows, [](const CSampleRow& row) { return row.runStart; })},
            {"instrument", Instrument(samples)},
            {"caller", FirstText(plate.rows, [](const CSampleRow& row) { return row.caller; })},
            {"unread", UnreadJson(unread)},
            {"samples", std::move(samples)},
            {"quality_by_position", quality.Quartiles()}};
}

// JSON that may stand in a script element: "<" only occurs inside of its texts.
std::string ForScript(const Json& json) {
    const std::string text = json.dump(-1, ' ', true, Json::error_handler_t::replace);
    std::string safe;
    safe.reserve(text.size());
    for (const char c : text)
        if (c == '<')
            safe += "\\u003c";
        else
            safe += c;
    return safe;
}

}  // namespace

std::vector<CPlateRows> GroupByPlate(std::vector<CSampleRow> rows) {
    std::vector<CPlateRows> plates;
    std::map<std::string, std::size_t> byFolder;
    for (CSampleRow& row : rows) {
        const std::string folder = FolderOf(row);
        const auto [found, isNew] = byFolder.emplace(folder, plates.size());
        if (isNew) plates.push_back({fs::path(folder).filename().string(), {}});
        plates[found->second].rows.push_back(std::move(row));
    }
    return plates;
}

std::string PlatePage(const CPlateRows& plate, bool withRaw, Unread& unread) {
    const std::size_t at = pageTemplate.find(pagePlaceholder);
    if (at == std::string_view::npos) throw std::logic_error("the page has no place for its plate");
    std::string page(pageTemplate.substr(0, at));
    page +=
        "<script type=\"application/json\" id=\"plate\">" + ForScript(PlateJson(plate, withRaw, unread)) + "</script>";
    page += pageTemplate.substr(at + pagePlaceholder.size());
    return page;
}

}  // namespace lanetools
