// SPDX-License-Identifier: MIT
// An adapter: a known sequence that was joined to the template and is not a part of the template.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "lanetools/samples/Stretch.h"

namespace lanetools {

class CAdapter {
  public:
    // `sequence` is IUPAC; `mismatch` is the part of its letters, 0 to below 1, that may differ from a read. Throws
    // CRefused for a sequence that is empty or has another letter.
    CAdapter(const std::string& sequence, double mismatch);

    // Returns the part of a read of these letters that remains. The adapter may be on either strand, without gaps. A
    // match in the first half of the read (its middle counts) is removed with everything before it, one in the second
    // half with everything after it. A letter of the read matches if all its bases are among those of the adapter's
    // letter.
    CStretch Cut(const std::string& letters) const;

  private:
    using Sets = std::vector<std::uint8_t>;

    bool IsAt(const Sets& strand, const Sets& read, std::size_t position) const;
    static Sets OtherStrand(const Sets& strand);

    Sets forward, reverse;
    std::size_t maxMismatches;  // of a match
};

}  // namespace lanetools
