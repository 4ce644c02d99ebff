// SPDX-License-Identifier: MIT
// Shared by the fuzz targets. A target is a function that takes arbitrary bytes and returns; if something is wrong it
// ends the process. libFuzzer calls it with bytes that it makes up, Replay.cpp with those of the seeds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/TempFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

// Ends the process if the condition is false.
inline void Demand(bool condition) {
    if (!condition) std::abort();
}

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// The temporary folder in which a target works.
inline const testsupport::TempFolder& Folder() {
    static const testsupport::TempFolder folder;
    return folder;
}

// Takes values of fixed size from the front of the input. Once it is used up they are zeros.
class CTaker {
  public:
    CTaker(const std::uint8_t* data, std::size_t size) : rest(Text(data, size)) {}

    template <class T>
    T Take() {
        T value{};
        const std::size_t count = rest.copy(reinterpret_cast<char*>(&value), sizeof value);
        rest.remove_prefix(count);
        return value;
    }

  private:
    std::string_view rest;
};

}  // namespace fuzz
