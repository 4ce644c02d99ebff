// SPDX-License-Identifier: MIT
// The value of a tag: one of four forms, or empty.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "tracewriter/Hresult.h"

// A one-dimensional array from index 0. It is created with its length and then filled; both steps can fail.
template <class Element>
class CTagArray {
  public:
    // Nothing if there can be no array of that length, for example a negative one.
    static std::optional<CTagArray> Create(std::int32_t length);
    // DISP_E_BADINDEX if the array has no such element.
    HRESULT Put(std::size_t index, Element value) {
        if (index >= elements.size()) return DISP_E_BADINDEX;
        elements[index] = value;
        return S_OK;
    }
    // Puts `values` at the indices from 0 on, as far as the array has room; the result is that of the last Put.
    HRESULT Fill(std::span<const Element> values) {
        std::copy_n(values.begin(), std::min(values.size(), elements.size()), elements.begin());
        return values.size() > elements.size() ? DISP_E_BADINDEX : S_OK;
    }
    std::span<const Element> All() const { return elements; }

  private:
    std::vector<Element> elements;
};

using CShortsArray = CTagArray<std::int16_t>;
using CBytesArray = CTagArray<std::uint8_t>;

// A text, a 16-bit number, an array of 16-bit numbers, an array of bytes; std::monostate is the empty value.
using CTagValue = std::variant<std::monostate, std::string, std::int16_t, CShortsArray, CBytesArray>;
