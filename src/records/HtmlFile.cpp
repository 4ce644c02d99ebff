// SPDX-License-Identifier: MIT
#include "records/HtmlFile.h"

#include <cstdint>
#include <memory>
#include <tuple>

#include "export/Formats.h"

const CRuntimeClass CHtmlFile::runtimeClass{"CHtmlFile", schemaNone,
                                            []() -> std::unique_ptr<CObject> { return std::make_unique<CHtmlFile>(); },
                                            &CQXIniFile::runtimeClass};

CHtmlFile::CHtmlFile(const std::string& filePath) {
    std::ignore = Open(filePath);
}

const CRuntimeClass& CHtmlFile::GetRuntimeClass() const {
    return runtimeClass;
}

void CHtmlFile::DefineSections() {
    const auto add = [&](const std::string& tag, std::int32_t ownLine) {
        sections.push_back({'<' + tag + '>', {}, ownLine});
    };
    sections.clear();
    add("log", 0);
    add("files", 0);
    for (const CFormat& format : formats) {
        add(std::string(format.tag), 1);
        add('/' + std::string(format.tag), 0);
    }
    add("/files", 0);
    add("/log", 0);
}
