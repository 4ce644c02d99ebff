// SPDX-License-Identifier: MIT
#include "lanetools/export/ReadCollection.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "lanetools/ExitCode.h"
#include "lanetools/export/MakeRead.h"
#include "lanetools/text/SafeName.h"
#include "lanetools/text/Utf8.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

// In one file for all plates a stem may be that of several samples.
std::string DefaultPattern(const std::string& per, const std::vector<COutputFolder>& outputs) {
    std::set<std::string> stems;
    bool isRepeated = false;
    for (const COutputFolder& output : outputs)
        for (const std::string& file : output.files)
            isRepeated |= !stems.insert(fs::path(file).stem().string()).second;
    return per == "run" && isRepeated ? "{plate}_{file}" : "{file}";
}

}  // namespace

CReadCollection::CReadCollection(const CExportOptions& wanted, const std::vector<COutputFolder>& outputs, Say report)
    : options(wanted),
      format(ParseFormat(wanted)),
      rules(ParseRules(wanted)),
      pattern("--name", wanted.name ? *wanted.name : DefaultPattern(wanted.per, outputs), ColumnNames()),
      say(std::move(report)) {
    if (options.files) filePattern.emplace("--files", *options.files, ColumnNames());
    if (options.sheet) sheet.emplace(*options.sheet);
    std::error_code error;
    if (const auto status = fs::status(options.folder, error); fs::exists(status) && !fs::is_directory(status))
        throw CRefused(options.folder + ": is a file, and a folder is needed");
    for (const COutputFolder& output : outputs)
        nameOfFolder[output.path] = Unique(SafeName(output.name), output.path);
}

void CReadCollection::Add(const COutputFolder& output, const CStoredSample& sample) {
    CRead read;
    read.row = MakeRow(sample, PlateFolderOf(output.name));
    read.title = Title(read.row);  // of failed samples too: their rows of the sheet are used
    if (sheet && sheet->Name(read.row.plate, read.row.well).empty())
        withoutRow.push_back(read.row.plate + " " + read.row.well + " (" + sample.path + ")");
    if (sample.state != SampleState::Called) {
        ++notExported;
        const std::string state = sample.unread.empty() ? StateName(sample.state) + std::string(": ") : "";
        say(sample.path + ": not exported: " + state + OneLine(read.row.reason));
        return;
    }
    if (!MakeRead(sample, rules, read)) {
        ++tooShort;
        return;
    }
    if (read.title.empty()) throw CRefused(sample.path + ": its title is empty");
    const std::string path = FilePath(output, sample, read);
    const auto [other, isNew] = sampleOfTitle.emplace(std::pair(path, read.title), sample.path);
    if (!isNew)
        throw CRefused(sample.path + ": its title in " + path + " is '" + read.title + "', as that of " +
                       other->second);
    files[path].push_back(std::move(read));
}

void CReadCollection::ReportSheet() {
    if (!sheet) return;
    for (const std::string& row : sheet->Unused())
        say(*options.sheet + ": no sample for " + row);
    constexpr std::size_t mostLines = 20;
    const std::size_t shown = std::min(withoutRow.size(), mostLines);
    for (std::size_t i = 0; i < shown; ++i)
        say(*options.sheet + ": no row for " + OneLine(withoutRow[i]));
    if (withoutRow.size() > shown)
        say(*options.sheet + ": no row for " + std::to_string(withoutRow.size() - shown) + " more samples");
}

// Returns `name`, with "_2" and so on if another source has it, which is reported.
std::string CReadCollection::Unique(const std::string& name, const std::string& source) {
    std::string unique = name;
    for (int number = 2; !names.insert(unique).second; ++number) {
        std::string end = "_";
        end += std::to_string(number);
        unique = name.substr(0, fs::path(name).parent_path().string().size() + longestName - end.size()) + end;
    }
    if (unique != name) say(source + ": exported as " + unique + ", since another one is called " + name);
    return unique;
}

// Relative to the target folder, without extension.
std::string CReadCollection::FileName(const COutputFolder& output, const CStoredSample& sample, const CRead& read) {
    if (options.per == "run") return "all";
    const std::string& folder = nameOfFolder.at(output.path);
    if (options.per == "plate") return folder;
    if (!filePattern) return Unique(folder + "/" + SafeName(sample.stem), sample.path);
    const std::string name = SafeName(Fill(*filePattern, read.row));
    if (name.empty()) throw CRefused(sample.path + ": the name of its file is empty");
    const auto [other, isNew] = sampleOfFile.emplace(folder + "/" + name, sample.path);
    if (!isNew) throw CRefused(sample.path + ": its file would be '" + name + "', as that of " + other->second);
    return folder + "/" + name;
}

std::string CReadCollection::FilePath(const COutputFolder& output, const CStoredSample& sample, const CRead& read) {
    // Absolute, since htslib takes "a:b" for an address.
    const std::string end = "." + options.format + (options.gzip ? ".gz" : "");
    return (fs::absolute(options.folder).lexically_normal() / (FileName(output, sample, read) + end)).string();
}

// The name in the sheet or, if it has none, the filled pattern.
std::string CReadCollection::Fill(const CTitlePattern& otherwise, const CSampleRow& row) {
    const std::string name = sheet ? sheet->Name(row.plate, row.well) : "";
    if (!name.empty()) return name;
    return otherwise.Fill([&](const std::string& column) { return ColumnText(row, column).value_or(""); });
}

std::string CReadCollection::Title(const CSampleRow& row) {
    const std::string title = OneWord(Fill(pattern, row));
    return format == ReadFormat::Sam || format == ReadFormat::Bam ? SamTitle(title) : title;
}

}  // namespace lanetools
