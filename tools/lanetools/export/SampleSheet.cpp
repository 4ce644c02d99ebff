// SPDX-License-Identifier: MIT
#include "lanetools/export/SampleSheet.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <set>
#include <string_view>

#include "lanetools/ExitCode.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

using Fields = std::vector<std::string>;

// Commas between quotes belong to the field; two quotes there mean one quote.
Fields SplitAtCommas(const std::string& line) {
    Fields fields(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool isPair = line[i] == '"' && isQuoted && i + 1 < line.size() && line[i + 1] == '"';
        if (isPair)
            fields.back() += line[++i];
        else if (line[i] == '"')
            isQuoted = !isQuoted;
        else if (line[i] == ',' && !isQuoted)
            fields.emplace_back();
        else
            fields.back() += line[i];
    }
    return fields;
}

Fields SplitAtTabs(const std::string& line) {
    Fields fields(1);
    for (const char c : line) {
        if (c == '\t')
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

std::string WithoutBlanks(const std::string& field) {
    const std::size_t first = field.find_first_not_of(' ');
    return first == std::string::npos ? "" : field.substr(first, field.find_last_not_of(' ') + 1 - first);
}

// Returns a well in the form for comparison: "A1" for "a01".
std::string PlainWell(const std::string& well) {
    std::string plain;
    for (const char c : well) {
        const bool isLeadingZero = c == '0' && (plain.empty() || plain.back() < '0' || plain.back() > '9');
        if (!isLeadingZero) plain += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return plain;
}

// Reads the lines of the file without their ends and a byte order mark.
Fields ReadLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    Fields lines;
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(ToUtf8(line));
    }
    if (!in.is_open() || in.bad() || (lines.empty() && !in.eof()))
        throw CRefused(path + ": " + std::strerror(errno != 0 ? errno : EIO));
    if (!lines.empty() && lines[0].starts_with("\xEF\xBB\xBF")) lines[0].erase(0, 3);
    return lines;
}

}  // namespace

CSampleSheet::CSampleSheet(const std::string& path) {
    const Fields lines = ReadLines(path);
    const bool hasTabs = !lines.empty() && lines[0].find('\t') != std::string::npos;
    const auto split = [&](const std::string& line) {
        Fields fields = hasTabs ? SplitAtTabs(line) : SplitAtCommas(line);
        std::transform(fields.begin(), fields.end(), fields.begin(), WithoutBlanks);
        return fields;
    };
    const Fields header = lines.empty() ? Fields{} : split(lines[0]);
    std::array<std::size_t, 3> columns{};
    for (std::size_t i = 0; i < columns.size(); ++i) {
        static constexpr std::array<const char*, 3> names{"plate", "well", "name"};
        columns[i] = static_cast<std::size_t>(std::find(header.begin(), header.end(), names[i]) - header.begin());
        if (columns[i] == header.size()) throw CRefused(path + ": the first line has no column '" + names[i] + "'");
    }
    std::set<std::string> names;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (WithoutBlanks(lines[i]).empty()) continue;
        const auto refuse = [&](const std::string& why) {
            throw CRefused(path + ": line " + std::to_string(i + 1) + ": " + why);
        };
        Fields fields = split(lines[i]);
        fields.resize(std::max(fields.size(), header.size()));
        const CRow row{i + 1, fields[columns[0]], fields[columns[1]], fields[columns[2]]};
        if (row.plate.empty() || row.well.empty() || row.name.empty()) refuse("plate, well or name is empty");
        if (!byWell.emplace(std::pair(row.plate, PlainWell(row.well)), rows.size()).second)
            refuse("well " + row.well + " of plate " + row.plate + " occurs twice");
        if (!names.insert(row.name).second) refuse("the name " + row.name + " occurs twice");
        rows.push_back(row);
    }
}

std::string CSampleSheet::Name(const std::string& plate, const std::string& well) {
    const auto found = byWell.find({WithoutBlanks(plate), PlainWell(WithoutBlanks(well))});
    if (found == byWell.end()) return "";
    rows[found->second].isUsed = true;
    return rows[found->second].name;
}

std::vector<std::string> CSampleSheet::Unused() const {
    std::vector<std::string> unused;
    for (const CRow& row : rows)
        if (!row.isUsed) unused.push_back(row.plate + " " + row.well + " (line " + std::to_string(row.line) + ")");
    return unused;
}

}  // namespace lanetools
