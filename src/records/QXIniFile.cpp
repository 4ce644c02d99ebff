#include "records/QXIniFile.h"

#include <tuple>

#include "platform/Ascii.h"
#include "platform/AtomicFile.h"
#include "platform/Clock.h"
#include "platform/Console.h"

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view fieldEnd = "\t\t";
constexpr std::int64_t longestFile = std::int64_t{1} << 30;
constexpr int pauseBetweenTries = 50;  // ms
constexpr int tries = 101;             // at once, then for 5 s

std::string_view TrimField(std::string_view field) {
    return platform::Trim(field, " \t\n\v\f\r");
}

// Takes the text up to the next tab off `rest`.
std::string_view TakeField(std::string_view& rest) {
    return TrimField(platform::TakeUntil("\t", rest));
}

void AppendFields(CIniEntry& entry, std::string_view value) {
    while (!value.empty())
        if (const std::string_view field = TakeField(value); !field.empty()) entry.emplace_back(field);
}

}  // namespace

const CRuntimeClass CQXIniFile::runtimeClass{
    "CQXIniFile", schemaNone, []() -> std::unique_ptr<CObject> { return std::make_unique<CQXIniFile>(); },
    &CObject::runtimeClass};

const CRuntimeClass& CQXIniFile::GetRuntimeClass() const {
    return runtimeClass;
}

platform::Error CQXIniFile::Open(const std::string& filePath, platform::OpenMode mode) {
    path = filePath;
    return file.Open(path, mode);
}

void CQXIniFile::ReadSections() {
    DefineSections();
    if (ReadText())
        Parse();
    else
        sections.clear();  // nothing may be written back over what could not be read
    file.CloseQuietly();
}

bool CQXIniFile::ReadText() {
    std::int64_t length = 0;
    if (file.Length(length) || length > longestFile) return false;
    text.resize(static_cast<std::size_t>(length));
    std::size_t got = 0;
    if (file.Read(std::as_writable_bytes(std::span(text)), got)) return false;
    text.resize(got);
    return true;
}

void CQXIniFile::Parse() {
    CIniSection* current = nullptr;
    for (std::string_view rest = text; !rest.empty();) {
        // A line end at the very start belongs to the line, so an empty line and the one after it are read as one.
        std::string_view value = platform::TakeUntil(lineEnd, rest, 1);
        const std::string_view key = TakeField(value);
        value = TrimField(value);
        if (CIniSection* named = FindSection(key)) {
            current = named;
            if (!value.empty()) AppendFields(current->entries.emplace_back(), value);
        } else if (!key.empty() && current) {
            CIniEntry& entry = current->entries.emplace_back();
            entry.emplace_back(key);
            AppendFields(entry, value);
        }
    }
}

CIniSection* CQXIniFile::FindSection(std::string_view tag) {
    for (CIniSection& section : sections)
        if (section.tag == tag) return &section;
    return nullptr;
}

void CQXIniFile::BuildText() {
    text.clear();
    for (const CIniSection& section : sections) {
        text.append(section.tag).append(section.ownLine ? lineEnd : fieldEnd);
        for (const CIniEntry& entry : section.entries) {
            for (const std::string& field : entry)
                text.append(field).append(fieldEnd);
            text.append(lineEnd);
        }
        if (section.entries.empty()) text.append(lineEnd);
    }
}

bool CQXIniFile::OpenForWriting() {
    for (int i = 0; i < tries; ++i) {
        if (i > 0) platform::Sleep(pauseBetweenTries);
        if (!Open(path, platform::OpenMode::CreateOrKeep)) return true;
    }
    return false;
}

// `text` in place of all that is there. A longer file is cut at the end and not emptied at first: other programs never
// see an empty log, and the host need not put the file on the disk at once, which takes longer than all the rest.
bool CQXIniFile::WriteText() {
    std::int64_t former = 0;
    if (file.Length(former) || file.Write(text)) return false;
    const auto length = static_cast<std::int64_t>(text.size());
    return former <= length || !file.Truncate(length);
}

// A new file takes the name, so there is a whole log at every moment.
platform::Error CQXIniFile::Replace(const std::string& former) {
    platform::AtomicFile next;
    if (const platform::Error error = next.Open(path)) return error;
    next.Write(text);
    return next.CommitKeeping(former);
}

void CQXIniFile::WriteSections() {
    const std::string former = path + ".temp";
    BuildText();
    if (!Replace(former)) return;
    if (platform::CopyFile(path, former)) {
        platform::ShowBox("Cannot create a backup copy");
        return;
    }
    if (!OpenForWriting()) return;
    const bool written = WriteText();
    if (!file.Close() && written) return;
    // A full disk costs this entry and not the former ones, for which there was room.
    std::ignore = platform::CopyFile(former, path);
}
