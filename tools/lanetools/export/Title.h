// SPDX-License-Identifier: MIT
// The title of a read: one word, made of the columns of its sample.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace lanetools {

// A pattern such as "{sample}_{well}".
class CTitlePattern {
  public:
    // Throws CRefused, which names `option`, for a brace without its partner, or a name in braces that is not one of
    // `columns`.
    CTitlePattern(const std::string& option, const std::string& pattern, const std::vector<std::string>& columns);

    // Returns the pattern with each column replaced by what `text` gives for its name.
    std::string Fill(const std::function<std::string(const std::string&)>& text) const;

  private:
    struct CPart {
        bool isColumn;
        std::string text;
    };
    std::vector<CPart> parts;
};

// `text` (UTF-8) as one word: white space and control characters become "_".
std::string OneWord(std::string_view text);

// Characters of the longest title in a SAM or BAM file.
inline constexpr std::size_t longestSamTitle = 254;
// A word as SAM takes it for a title: other characters than those of ASCII, and "@", become "_"; so does a lone "*",
// which means "no title". Cut at longestSamTitle.
std::string SamTitle(std::string_view word);
// `text` (UTF-8) as the value of a header field: other characters than those of ASCII become "_".
std::string SamText(std::string_view text);

}  // namespace lanetools
