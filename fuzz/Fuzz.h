// What the fuzz targets share. A target is a function that takes any bytes and comes back; it dies where something is
// wrong. libFuzzer calls it with bytes of its own making, Replay.cpp with those of the seeds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "support/TempFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline void Demand(bool condition) {
    if (!condition) std::abort();
}

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// The folder that a target works in.
inline const testsupport::TempFolder& Folder() {
    static const testsupport::TempFolder folder;
    return folder;
}

// Takes fixed-size values off the front of the input; zeros when it is used up.
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
