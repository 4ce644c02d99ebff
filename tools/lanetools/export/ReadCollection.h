// SPDX-License-Identifier: MIT
// All reads of an export, by the file that they go to.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "lanetools/export/ExportOptions.h"
#include "lanetools/export/Read.h"
#include "lanetools/export/ReadFile.h"
#include "lanetools/export/SampleSheet.h"
#include "lanetools/export/Title.h"
#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/StoredSample.h"

namespace lanetools {

class CReadCollection {
  public:
    // Shows the user a message of one line.
    using Say = std::function<void(const std::string& message)>;

    // Throws CRefused if an option is wrong. `options` must outlive the collection.
    CReadCollection(const CExportOptions& options, const std::vector<COutputFolder>& outputs, Say say);

    // Adds the read of one sample of `output`, which is one of the folders that were given. Throws CRefused if its
    // title or the name of its file is empty or equals that of another read.
    void Add(const COutputFolder& output, const CStoredSample& sample);
    // Reports the rows of the sheet without a sample, and the samples without a row.
    void ReportSheet();

    // By path.
    const std::map<std::string, std::vector<CRead>>& Files() const { return files; }
    // Number of samples that failed or are damaged, and of reads that were too short.
    std::size_t NotExported() const { return notExported; }
    std::size_t TooShort() const { return tooShort; }

  private:
    std::string Unique(const std::string& name, const std::string& source);
    std::string FileName(const COutputFolder& output, const CStoredSample& sample, const CRead& read);
    std::string FilePath(const COutputFolder& output, const CStoredSample& sample, const CRead& read);
    std::string Fill(const CTitlePattern& otherwise, const CSampleRow& row);
    std::string Title(const CSampleRow& row);

    const CExportOptions& options;
    ReadFormat format;
    CReadRules rules;
    CTitlePattern pattern;
    std::optional<CTitlePattern> filePattern;  // of --files
    std::optional<CSampleSheet> sheet;
    Say say;
    std::set<std::string> names;                      // taken in the target folder, relative to it
    std::map<std::string, std::string> nameOfFolder;  // by path of the output folder
    std::map<std::string, std::vector<CRead>> files;
    std::map<std::pair<std::string, std::string>, std::string> sampleOfTitle;  // by file and title, its sample's path
    std::map<std::string, std::string> sampleOfFile;                           // by name of --files, its sample's path
    std::vector<std::string> withoutRow;                                       // samples of which the sheet has no row
    std::size_t notExported = 0, tooShort = 0;
};

}  // namespace lanetools
