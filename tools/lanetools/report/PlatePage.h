// SPDX-License-Identifier: MIT
// The page of one plate.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "lanetools/samples/SampleRow.h"
#include "lanetools/samples/Unread.h"

namespace lanetools {

// The rows of one plate's page: those of one output folder, or the raw samples of a plate that has none.
struct CPlateRows {
    std::string folder;  // name of that folder
    std::vector<CSampleRow> rows;
};

// The plates in the order of their first rows. `rows` as Summarize gives them.
std::vector<CPlateRows> GroupByPlate(std::vector<CSampleRow> rows);

// The page as one HTML file. With `withRaw` it has the raw curves of the samples whose raw file is known. It shows
// `unread` and what could not be read of the samples, which is added to it. Throws CInterrupted after Ctrl-C.
std::string PlatePage(const CPlateRows& plate, bool withRaw, Unread& unread);

// The page without a plate: HTML, style and program in one, which the build makes of the modules in page/. It has
// pagePlaceholder once, where the plate's data go.
extern const std::string_view pageTemplate;
inline constexpr std::string_view pagePlaceholder = "<!-- plate -->";

}  // namespace lanetools
