// SPDX-License-Identifier: MIT
#include "callsagree/Fasta.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace callsagree {

namespace {

namespace fs = std::filesystem;

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string StemOfTitle(const std::string& title) {
    const std::size_t tab = title.find('\t');
    std::string name = title.substr(0, tab != std::string::npos ? tab : title.find(' '));
    name.erase(0, name.find_last_of("/\\") + 1);
    return name.substr(0, name.rfind('.'));
}

bool IsFastaName(const fs::path& path) {
    return path.extension() == ".seq" || path.extension() == ".fasta";
}

// Sorted, so that the table does not depend on the file system.
std::vector<fs::path> FastaFilesIn(const fs::path& folder, const fs::path& except) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || !IsFastaName(entry.path())) continue;
        if (!fs::equivalent(entry.path(), except)) files.push_back(entry.path());
    }
    if (files.empty()) throw std::runtime_error("no .seq or .fasta files in " + folder.string());
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<FastaRecord> ReadFasta(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<FastaRecord> records;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.starts_with('>')) {
            records.push_back({StemOfTitle(line.substr(1)), ""});
        } else if (!line.empty()) {
            if (records.empty()) throw std::runtime_error(path + " is no FASTA file");
            std::transform(line.begin(), line.end(), std::back_inserter(records.back().bases), Upper);
        }
    }
    if (!file.eof()) throw std::runtime_error("cannot read " + path);
    return records;
}

std::vector<FastaRecord> ReadCalls(const std::vector<std::string>& paths, const std::string& except) {
    std::vector<FastaRecord> records;
    for (const std::string& path : paths) {
        const auto files = fs::is_directory(path) ? FastaFilesIn(path, except) : std::vector<fs::path>{path};
        for (const fs::path& file : files) {
            const auto more = ReadFasta(file.string());
            records.insert(records.end(), more.begin(), more.end());
        }
    }
    return records;
}

}  // namespace callsagree
