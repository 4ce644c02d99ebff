// SPDX-License-Identifier: MIT
// LANECALL_WIDE marks a function whose loops over scans are worth wider registers: it is compiled once more for
// processors that have AVX2, and the one that fits is chosen when the library is loaded. The results are the same: only
// independent values are computed together, and no multiplication is fused with an addition. No exception may leave
// such a function, so it must not allocate: GCC 12 ends the process at a frame of a clone.
#pragma once

#include <cstddef>

#if defined(__x86_64__) && defined(__ELF__) && !defined(__SANITIZE_ADDRESS__)
#define LANECALL_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define LANECALL_WIDE
#endif

namespace lanecall {

// Eight numbers in one register, or in two of a processor without AVX2. Functions take and return them by reference.
constexpr std::size_t eight = 8;
typedef float EightFloats __attribute__((vector_size(eight * sizeof(float))));

}  // namespace lanecall
