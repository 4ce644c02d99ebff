// SPDX-License-Identifier: MIT
#include "lanetools/export/SampleSheet.h"

#include <algorithm>
#include <array>
#include <set>
#include <sstream>
#include <utility>

#include "lanetools/ExitCode.h"
#include "lanetools/system/ReadText.h"
#include "lanetools/text/Utf8.h"
#include "platform/Ascii.h"

namespace lanetools {

namespace {

using Fields = std::vector<std::string>;

constexpr std::size_t largestSheet = std::size_t{16} << 20;
constexpr std::array<const char*, 3> columnNames{"plate", "well", "name"};

// Separators between quotes belong to the field; two quotes there mean one quote. A quote after the
// first letter of a field is itself, and tabs have no quotes.
Fields Split(const std::string& line, char separator) {
    Fields fields(1);
    bool isQuoted = false, isPlain = false;  // the latter once a letter has come without a quote before it
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool isQuote = line[i] == '"' && separator != '\t' && !isPlain;
        const bool isPair = isQuote && isQuoted && i + 1 < line.size() && line[i + 1] == '"';
        if (isPair)
            fields.back() += line[++i];
        else if (isQuote)
            isQuoted = !isQuoted;
        else if (line[i] == separator && !isQuoted) {
            fields.emplace_back();
            isPlain = false;
        } else {
            fields.back() += line[i];
            isPlain = isPlain || (line[i] != ' ' && !isQuoted);
        }
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
    std::string text = ReadText(path, largestSheet);
    if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
    std::istringstream in(std::move(text));
    Fields lines;
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(ToUtf8(line));
    }
    return lines;
}

Fields SplitPlain(const std::string& line, char separator) {
    Fields fields = Split(line, separator);
    std::transform(fields.begin(), fields.end(), fields.begin(), WithoutBlanks);
    return fields;
}

// How a sheet is divided.
struct CHeader {
    char separator = ',';
    Fields fields;
    std::array<std::size_t, columnNames.size()> columns{};  // indices of columnNames, fields.size() for a missing one

    CHeader(const std::string& line, char by) : separator(by), fields(SplitPlain(line, by)) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const auto isName = [&](const std::string& field) {
                return platform::EqualIgnoringCase(field, columnNames[i]);
            };
            columns[i] = static_cast<std::size_t>(std::find_if(fields.begin(), fields.end(), isName) - fields.begin());
        }
    }
    // Index in columnNames of the first column that is missing.
    std::size_t Missing() const {
        return static_cast<std::size_t>(std::find(columns.begin(), columns.end(), fields.size()) - columns.begin());
    }
};

// Throws CRefused, with the columns that were found, if one is missing with any separator.
CHeader ReadHeader(const std::string& path, const std::string& line) {
    CHeader best(line, '\t');
    for (const char separator : {'\t', ';', ','}) {
        CHeader header(line, separator);
        if (header.Missing() == columnNames.size()) return header;
        if (header.fields.size() > best.fields.size()) best = std::move(header);
    }
    std::string found;
    for (const std::string& field : best.fields)
        found += (found.empty() ? "" : ", ") + OneLine(field);
    throw CRefused(path + ": the first line has no column '" + columnNames.at(best.Missing()) + "'; it has: " + found);
}

}  // namespace

CSampleSheet::CSampleSheet(const std::string& path) {
    const Fields lines = ReadLines(path);
    const CHeader header = ReadHeader(path, lines.empty() ? "" : lines[0]);
    const auto& columns = header.columns;
    std::set<std::string> names;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const auto refuse = [&](const std::string& why) {
            throw CRefused(path + ": line " + std::to_string(i + 1) + ": " + why);
        };
        Fields fields = SplitPlain(lines[i], header.separator);
        if (std::all_of(fields.begin(), fields.end(), [](const std::string& field) { return field.empty(); }))
            continue;  // spreadsheets write such lines for empty rows
        fields.resize(std::max(fields.size(), header.fields.size()));
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
