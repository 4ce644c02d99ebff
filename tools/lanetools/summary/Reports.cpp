// SPDX-License-Identifier: MIT
#include "lanetools/summary/Reports.h"

#include <map>
#include <optional>
#include <utility>

#include <nlohmann/json.hpp>

#include "lanetools/summary/PlateStates.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* schemaName = "lanetools-summary-1";

Json JsonValue(const std::string& value) {
    return value;
}

template <class Number>
Json JsonValue(const std::optional<Number>& value) {
    return value ? Json(*value) : Json(nullptr);
}

// Texts that a sample does not have count as absent, as its numbers do.
bool IsAbsent(const Json& value) {
    return value.is_string() && value.get_ref<const std::string&>().empty();
}

}  // namespace

std::string TsvReport(const std::vector<CSampleRow>& rows) {
    std::string text;
    for (const std::string& name : ColumnNames())
        text += (text.empty() ? "" : "\t") + name;
    text += '\n';
    for (const CSampleRow& row : rows) {
        bool isFirst = true;
        VisitColumns(row, [&](const char*, const auto& value) {
            if (!isFirst) text += '\t';
            text += OneLine(ValueText(value));
            isFirst = false;
        });
        text += '\n';
    }
    return text;
}

std::string JsonReport(const std::vector<CSampleRow>& rows) {
    Json report{{"schema", schemaName}, {"version", LANEWRIGHT_VERSION}};
    Json& plates = report["plates"] = Json::array();
    for (const auto& [plate, counts] : PlateStates(rows))
        plates.push_back({{"plate", plate},
                          {"called", counts.called},
                          {"failed", counts.failed},
                          {"missing", counts.missing},
                          {"damaged", counts.damaged}});
    Json& samples = report["samples"] = Json::array();
    for (const CSampleRow& row : rows) {
        Json sample = Json::object();  // see SampleJson
        VisitColumns(row, [&](const char* name, const auto& value) {
            Json one = JsonValue(value);
            sample[name] = IsAbsent(one) ? Json(nullptr) : std::move(one);
        });
        samples.push_back(std::move(sample));
    }
    return report.dump(2) + "\n";
}

}  // namespace lanetools
