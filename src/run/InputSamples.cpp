// SPDX-License-Identifier: MIT
#include "run/InputSamples.h"

#include <algorithm>
#include <tuple>

#include "samplestore/RsdFile.h"
#include "samplestore/SampleFile.h"

namespace {

bool HasTrailer(const std::string& path) {
    CRsdFile file;
    return !file.Open(path, true) && file.IsSurelySample();
}

}  // namespace

CInputSamples::CInputSamples(const std::vector<std::string>& plates, const std::vector<std::string>& files,
                             const std::vector<CFileTypeFilter>& types) {
    for (const std::string& folder : plates)
        for (const CFileTypeFilter& type : types) {
            std::vector<platform::FoundEntry> found;
            std::ignore = platform::FindFiles(folder + '\\' + type.pattern, found);
            for (const platform::FoundEntry& entry : found)
                if (!entry.isDirectory) Add(folder + '\\' + entry.name);
        }
    for (const std::string& path : files)
        if (HasSampleExtension(path) || HasTrailer(path)) Add(path);
    std::sort(known.begin(), known.end());
}

void CInputSamples::Add(const std::string& path) {
    const auto name = platform::IdentityOfName(path), file = platform::IdentityOf(path);
    if (name) known.push_back(*name);
    if (file && file != name) known.push_back(*file);
}

bool CInputSamples::Has(const platform::FileIdentity& file) const {
    return std::binary_search(known.begin(), known.end(), file);
}

bool CInputSamples::IsWriteForbidden(const std::string& path) const {
    const auto file = platform::IdentityOf(path);
    if (file && Has(*file)) return true;
    const std::vector<std::string> links = platform::LinkPaths(path);
    if (links.empty()) return false;
    if (file) return HasSampleExtension(links.back()) || HasTrailer(path);
    return std::any_of(links.begin(), links.end(), HasSampleExtension);
}

bool CInputSamples::IsReplaceForbidden(const std::string& path) const {
    const auto name = platform::IdentityOfName(path);
    return name && Has(*name);
}
