#include "records/HtmlFile.h"

const CRuntimeClass CHtmlFile::runtimeClass{"CHtmlFile", schemaNone,
                                            []() -> std::unique_ptr<CObject> { return std::make_unique<CHtmlFile>(); },
                                            &CQXIniFile::runtimeClass};

CHtmlFile::CHtmlFile(const std::string& filePath, platform::OpenMode mode) {
    if (!Open(filePath, mode)) ReadSections();
}

const CRuntimeClass& CHtmlFile::GetRuntimeClass() const {
    return runtimeClass;
}

void CHtmlFile::DefineSections() {
    struct Definition {
        const char* tag;
        std::int32_t ownLine;
    };
    constexpr Definition definitions[] = {
        {"<log>", 0},  {"<files>", 0}, {"<esd>", 1},    {"</esd>", 0}, {"<abd>", 1},  {"</abd>", 0},   {"<scf>", 1},
        {"</scf>", 0}, {"<fasta>", 1}, {"</fasta>", 0}, {"<txt>", 1},  {"</txt>", 0}, {"</files>", 0}, {"</log>", 0}};
    sections.clear();
    sections.reserve(std::size(definitions));
    for (const Definition& definition : definitions)
        sections.push_back(NewSection(definition.tag, definition.ownLine));
}
