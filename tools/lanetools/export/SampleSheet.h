// SPDX-License-Identifier: MIT
// A sample sheet: the names that a laboratory gives to the wells of its plates.
//
// A text file of up to 16 MiB with a header line that has the columns "plate", "well" and "name" in any letter case
// (others are ignored), separated by tabs, semicolons or commas: the first of these that gives the three columns.
// Between semicolons or commas a field may be quoted. Plates are compared with the column "plate" of the summary, wells
// without regard to letter case or leading zeros (a1 is A01).
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace lanetools {

class CSampleSheet {
  public:
    // Reads the file at `path`. Throws CRefused if it cannot be read, lacks a column, has a row without one of the
    // three fields, or has a well or a name twice.
    explicit CSampleSheet(const std::string& path);

    // Returns the name for a well, empty if the sheet has none. From then on the row counts as used.
    std::string Name(const std::string& plate, const std::string& well);
    // Returns the rows that no call of Name has found, as "PLATE WELL (line N)", in the order of the sheet.
    std::vector<std::string> Unused() const;

  private:
    struct CRow {
        std::size_t line;  // in the file, from 1
        std::string plate, well, name;
        bool isUsed = false;
    };
    std::vector<CRow> rows;
    std::map<std::pair<std::string, std::string>, std::size_t> byWell;  // plate and well, to the index in `rows`
};

}  // namespace lanetools
