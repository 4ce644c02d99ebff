// SPDX-License-Identifier: MIT
#include "records/QXIniFile.h"

#include <memory>

#include "platform/Ascii.h"
#include "platform/Console.h"

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view fieldEnd = "\t\t";
constexpr std::size_t maxFileSize = std::size_t{1} << 30;

std::string_view TrimField(std::string_view field) {
    return platform::Trim(field, " \t\n\v\f\r");
}

// Removes the text up to the next tab from `rest` and returns it, trimmed.
std::string_view TakeField(std::string_view& rest) {
    return TrimField(platform::TakeUntil("\t", rest));
}

}  // namespace

void CIniEntries::Add(std::string_view field, std::string_view rest) {
    lines.append(field).append(fieldEnd);
    while (!rest.empty())
        if (const std::string_view next = TakeField(rest); !next.empty()) lines.append(next).append(fieldEnd);
    lines.append(lineEnd);
}

const CRuntimeClass CQXIniFile::runtimeClass{
    "CQXIniFile", schemaNone, []() -> std::unique_ptr<CObject> { return std::make_unique<CQXIniFile>(); },
    &CObject::runtimeClass};

const CRuntimeClass& CQXIniFile::GetRuntimeClass() const {
    return runtimeClass;
}

platform::Error CQXIniFile::Open(const std::string& filePath) {
    path = filePath;
    if (const platform::Error error = file.Begin(path)) return error;
    if (written.empty() || !file.IsAsWritten()) ReadSections();
    return platform::success;
}

void CQXIniFile::ReadSections() {
    DefineSections();
    written.clear();
    readError = file.Read(text, maxFileSize);
    if (readError)
        sections.clear();  // so that nothing is written over a file that could not be read
    else
        Parse();
    std::string().swap(text);  // releases the memory too
}

void CQXIniFile::Parse() {
    CIniSection* current = nullptr;
    for (std::string_view rest = text; !rest.empty();) {
        // A line end at the very start is part of the line, so an empty line and the one after it are read as one line.
        std::string_view value = platform::TakeUntil(lineEnd, rest, 1);
        const std::string_view key = TakeField(value);
        value = TrimField(value);
        if (CIniSection* named = FindSection(key)) {
            current = named;
            if (value.empty()) continue;
            const std::string_view first = TakeField(value);
            current->entries.Add(first, value);
        } else if (!key.empty() && current) {
            current->entries.Add(key, value);
        }
    }
}

CIniSection* CQXIniFile::FindSection(std::string_view tag) {
    for (CIniSection& section : sections)
        if (section.tag == tag) return &section;
    return nullptr;
}

void CQXIniFile::WriteSections() {
    std::vector<std::string_view> parts;
    std::uint64_t size = 0, same = 0;
    bool isSame = written.size() == sections.size();  // so far
    const auto add = [&](std::string_view part) {
        parts.push_back(part);
        size += part.size();
    };
    for (std::size_t i = 0; i < sections.size(); ++i) {
        const CIniSection& section = sections[i];
        const std::string_view lines = section.entries.Lines();
        add(section.tag);
        add(section.ownLine ? lineEnd : fieldEnd);
        // Entries are only ever added, so the file first differs where the first section with new entries ended before.
        if (isSame) same = size + written[i];
        isSame = isSame && written[i] == lines.size();
        add(lines.empty() ? lineEnd : lines);
    }
    written.clear();
    for (const CIniSection& section : sections)
        written.push_back(section.entries.Lines().size());
    if (!file.Replace(parts, same)) return;
    written.clear();
    platform::ShowBox("Cannot create a backup copy");
}
