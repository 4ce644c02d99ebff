// SPDX-License-Identifier: MIT
#include "lanetools/report/SampleJson.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "lanetools/report/SampleCurves.h"
#include "lanetools/samples/ChannelLetters.h"
#include "lanetools/samples/RawPlate.h"
#include "lanetools/samples/StoredSample.h"
#include "lanetools/text/Utf8.h"
#include "plugins/ScanRate.h"

namespace lanetools {

namespace {

using Json = nlohmann::ordered_json;

Json ColumnValue(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}
template <class Number>
Json ColumnValue(const std::optional<Number>& number) {
    return number ? Json(*number) : Json(nullptr);
}

// Labels and values; a value that is empty or 0 is left out.
class CDescription {
  public:
    void Text(const char* label, const std::string& value) {
        if (!value.empty()) pairs.push_back({label, ToUtf8(value)});
    }
    void Number(const char* label, double value, const char* unit) {
        if (value == 0) return;
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%g%s", value, unit);
        Text(label, text.data());
    }
    Json Take() { return std::move(pairs); }

  private:
    Json pairs = Json::array();
};

Json Description(const CSampleInfo& info) {
    CDescription lines;
    lines.Text("Comment", info.comment);
    lines.Text("Instrument", FieldText(info.instrumentId));
    lines.Text("Machine", info.machineId);
    lines.Text("Operator", FieldText(info.operatorName));
    lines.Text("Run", FieldText(info.runId));
    lines.Text("Bar code", info.barCode);
    lines.Text("Chemistry", info.chemistryName);
    lines.Text("Application", info.chemistryApplication);
    for (std::size_t i = 0; i < channelCount; ++i)
        lines.Text(("Dye of channel " + std::to_string(i + 1)).c_str(), info.channel[i].dye);
    lines.Number("Run voltage", info.runVoltage, "");
    lines.Number("Injection voltage", info.injectionVoltage, "");
    lines.Number("Injection time", info.injectionTime, "");
    lines.Number("Temperature", info.temperature, "");
    lines.Number("Scans per second", ScanRateHz(info.scanRate), "");
    lines.Number("Capillaries", info.capillaries, "");
    return lines.Take();
}

// Whether the stored sample, read for the second time, still gives the curves that its row announces.
bool HasTrace(const CSampleRow& row, const CStoredSample& stored, Unread& unread) {
    unread.insert(unread.end(), stored.unread.begin(), stored.unread.end());
    if (stored.state != row.state && stored.unread.empty() && row.unread.empty())
        unread.push_back({row.path, "it has changed since the first look at it"});
    return row.state == SampleState::Called && stored.state == SampleState::Called;
}

void AddContents(Json& json, const CSampleRow& row, bool withRaw, CQualityByPosition& quality, Unread& unread) {
    CSampleInfo info;
    if (!row.path.empty()) {
        CStoredSample stored = ReadStoredFile(row.path);
        if (HasTrace(row, stored, unread)) {
            json["trace"] = PackTrace(stored, unread);
            quality.Add(
                std::span(stored.info.analysis.qualityScores)
                    .first(static_cast<std::size_t>(std::max<std::int16_t>(stored.info.analysis.basesCalled, 0))));
        }
        info = std::move(stored.info);
    } else if (!row.rawPath.empty()) {
        CRawSample raw = ReadRawSample(row.rawPath, "");
        unread.insert(unread.end(), raw.unread.begin(), raw.unread.end());
        info = std::move(raw.info);
    }
    json["description"] = Description(info);
    json["letters"] = ChannelLetters(info);
    if (withRaw && !row.rawPath.empty()) json["raw"] = PackRaw(row.rawPath, unread);
}

}  // namespace

Json SampleJson(const CSampleRow& row, bool withRaw, CQualityByPosition& quality, Unread& unread) {
    unread.insert(unread.end(), row.unread.begin(), row.unread.end());
    Json json = Json::object();  // an empty one that becomes an object by itself cannot be destroyed if memory lacks
    VisitColumns(row, [&](const char* name, const auto& value) { json[name] = ColumnValue(value); });
    json["description"] = Json::array();
    json["letters"] = ChannelLetters({});
    try {
        AddContents(json, row, withRaw, quality, unread);
    } catch (const std::bad_alloc&) {
        unread.push_back({row.path.empty() ? row.rawPath : row.path, NoMemory()});
    }
    for (const char* curves : {"trace", "raw"})
        if (json.contains(curves) && json[curves].is_null()) json.erase(curves);
    return json;
}

}  // namespace lanetools
