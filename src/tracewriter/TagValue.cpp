// SPDX-License-Identifier: MIT
#include "tracewriter/TagValue.h"

#include <new>

#include "tracewriter/ClassTable.h"

template <class Element>
std::optional<CTagArray<Element>> CTagArray<Element>::Create(std::int32_t length) {
    const std::optional<std::size_t> granted = CClassTable::Active().grantArray(length);
    if (!granted) return std::nullopt;
    try {
        CTagArray array;
        array.elements.resize(*granted);
        return array;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

template class CTagArray<std::int16_t>;
template class CTagArray<std::uint8_t>;
