// SPDX-License-Identifier: MIT
// Text from sample files, whose character set is not recorded, as UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lanetools {

// `bytes` unchanged if they are well-formed UTF-8 (no surrogates, no overlong forms); otherwise each byte is read as a
// Latin-1 character.
std::string ToUtf8(std::string_view bytes);

// `text` with each control character (below U+0020, U+007F to U+009F) as a blank, so that it fits in one column of a
// tab-separated table. `text` is UTF-8.
std::string OneLine(std::string_view text);

// Bytes of the UTF-8 character at the start of `text`, 1 to 4; 0 if it does not begin with a well-formed one. `text` is
// not empty.
std::size_t Utf8Length(std::string_view text);

}  // namespace lanetools
