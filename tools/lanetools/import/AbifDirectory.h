// SPDX-License-Identifier: MIT
// The directory of an ABIF file, the form in which DNA sequencers store their runs.
//
// All numbers are big-endian.
//
//   offset   size    content
//   0        4       "ABIF"; some files have 128 bytes of another system before it, which offsets do not count
//   4        2       version times 100
//   6        28      entry of the directory itself; its elements are the entries, its offset is where they begin
//   ...              values and the directory, in any order
//
// An entry, 28 bytes or more:
//
//   offset   size    content
//   0        4       name
//   4        4       number; name and number together are the tag
//   8        2       type of the elements
//   10       2       bytes of one element
//   12       4       elements
//   16       4       bytes of the value
//   20       4       offset of the value; a value of 4 bytes or fewer is stored here itself, left-aligned
//   24       4       not used
//
// Types that are read:
//
//   type  name      bytes  content
//   1     byte      1      unsigned
//   2     char      1      a character, or signed
//   3     word      2      unsigned
//   4     short     2      signed
//   5     long      4      signed
//   6     rational  8      two longs, the first divided by the second
//   7     float     4      IEEE 754
//   8     double    8      IEEE 754
//   10    date      4      year (short), month, day
//   11    time      4      hour, minute, second, hundredth of a second
//   18    pString   1      a byte with the length, then the characters
//   19    cString   1      the characters, then a NUL
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lanetools {

// Why a file cannot be imported, in one sentence.
class CUnusable : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Looks values up in the bytes of a file, which stay the caller's and must remain live while this is in use. Nothing in
// them is trusted: an entry is damaged, and has no value, if its value is not within the file or its size is not that
// of its elements. Entries may overlap. If a tag occurs more than once, its last good entry counts.
class CAbifDirectory {
  public:
    // Throws CUnusable if it is not an ABIF file, or the directory is not within the file.
    explicit CAbifDirectory(std::span<const std::byte> file);

    // True if the file has an entry of this tag and it is damaged.
    bool IsDamaged(std::string_view name, std::int32_t number) const;
    // Number of elements of a value of any type; 0 without a value.
    std::size_t Count(std::string_view name, std::int32_t number) const;
    // The characters of a char, byte, pString or cString value up to the first NUL, without white space at both ends.
    // Empty without such a value.
    std::string Text(std::string_view name, std::int32_t number = 1) const;
    // The first number of a value of type 1 to 8.
    std::optional<double> Number(std::string_view name, std::int32_t number = 1) const;
    // All elements of a value of type 1 to 5. Empty without such a value.
    std::vector<std::int64_t> Integers(std::string_view name, std::int32_t number) const;
    // Year, month and day as stored.
    std::optional<std::array<int, 3>> Date(std::string_view name, std::int32_t number) const;
    // Hour, minute and second as stored.
    std::optional<std::array<int, 3>> Time(std::string_view name, std::int32_t number) const;

  private:
    struct CEntry {
        std::uint16_t type = 0;
        bool isDamaged = false;
        std::span<const std::byte> value;  // complete elements
    };

    CEntry ReadEntry(std::size_t at) const;
    const CEntry* Find(std::string_view name, std::int32_t number) const;

    std::span<const std::byte> bytes;                                     // from "ABIF" on
    std::map<std::pair<std::string_view, std::int32_t>, CEntry> entries;  // by name (in `bytes`) and number
};

}  // namespace lanetools
