// SPDX-License-Identifier: MIT
#include "samplestore/PropertyTree.h"

namespace {

std::uint8_t LowerCase(std::uint8_t c) {
    return c >= 'A' && c <= 'Z' ? static_cast<std::uint8_t>(c + 32) : c;
}

// Below 0, 0 or above 0 if `component` sorts before, equal to or after the NUL-terminated stored key.
int CompareKeys(std::string_view component, const std::uint8_t* stored) {
    for (const char c : component) {
        const int difference = LowerCase(static_cast<std::uint8_t>(c)) - LowerCase(*stored);
        if (difference != 0) return difference;
        ++stored;
    }
    return -static_cast<int>(*stored);
}

}  // namespace

bool CPropertyTree::IsKeyValid(std::string_view key) {
    return !key.empty() && key.front() != '.' && key.back() != '.' && key.find("..") == std::string_view::npos &&
           key.find('\0') == std::string_view::npos;
}

bool CPropertyTree::SkipChildren(ConstPosition& cursor, std::uint32_t n, ConstPosition limit) {
    if (n % 2 != 0) return false;
    ConstPosition at = cursor;
    // Nested pairs follow their subtree's header in the same stream, so a single count of the pairs still to come
    // covers every depth. Each pair takes at least two bytes, so the walk ends.
    for (std::uint64_t pending = n / 2; pending > 0; --pending) {
        CPropertyItem key, value;
        if (!ParseItem(&key, at, true, limit) || !ParseItem(&value, at, true, limit)) return false;
        if (key.type != property::Text) return false;
        if (value.type != property::Subtree) continue;
        if (value.count % 2 != 0) return false;
        pending += value.count / 2;
    }
    cursor = at;
    return true;
}

CPropertyTree::ConstPosition CPropertyTree::FindEnd(ConstPosition start, ConstPosition limit) {
    for (ConstPosition at = start;;) {
        const ConstPosition here = at;
        CPropertyItem item;
        if (!ParseItem(&item, at, true, limit)) return nullptr;
        if (item.type == property::EndMarker) return here;
    }
}

CPropertyTree::ConstPosition CPropertyTree::Find(std::string_view key, ConstPosition start, CPropertyItem& item,
                                                 std::size_t& pairSize, std::int32_t pairs, ConstPosition limit) {
    pairSize = 0;
    if (pairs == 0) return start;
    if (!IsKeyValid(key)) return nullptr;

    std::string_view component = key.substr(0, key.find('.'));
    ConstPosition at = start;
    for (std::int32_t i = 0; pairs == topLevel || i < pairs; ++i) {
        const ConstPosition pair = at;
        CPropertyItem stored, value;
        if (!ParseItem(&stored, at, true, limit)) return nullptr;
        if (stored.type == property::EndMarker) return pair;
        if (stored.type != property::Text || !ParseItem(&value, at, true, limit)) return nullptr;

        const int order = CompareKeys(component, stored.data);
        if (order < 0) return pair;
        if (order > 0) {
            if (value.type == property::Subtree && !SkipChildren(at, value.count, limit)) return nullptr;
            continue;
        }
        if (component.size() == key.size()) {
            pairSize = static_cast<std::size_t>(at - pair);
            item = value;
            return pair;
        }
        if (value.type != property::Subtree || value.count % 2 != 0) return nullptr;
        // Go down into the sub-level with the rest of the key.
        key.remove_prefix(component.size() + 1);
        component = key.substr(0, key.find('.'));
        pairs = static_cast<std::int32_t>(value.count / 2);
        i = -1;
    }
    return at;
}

CPropertyLevel::CPropertyLevel(std::span<const std::uint8_t> tree) : limit(tree.data() + tree.size()) {
    for (CPropertyTree::ConstPosition at = tree.data();;) {
        CPropertyItem key, value;
        if (!CPropertyTree::ParseItem(&key, at, true, limit) || key.type != property::Text) return;
        if (!CPropertyTree::ParseItem(&value, at, true, limit)) return;
        pairs.push_back({key.data, value});
        if (value.type == property::Subtree && !CPropertyTree::SkipChildren(at, value.count, limit)) return;
    }
}

bool CPropertyLevel::Get(std::string_view key, CPropertyItem& item) const {
    if (!CPropertyTree::IsKeyValid(key)) return false;
    const std::string_view component = key.substr(0, key.find('.'));
    for (const Pair& pair : pairs) {
        const int order = CompareKeys(component, pair.key);
        if (order > 0) continue;
        if (order < 0) return false;
        const CPropertyItem& value = pair.value;
        if (component.size() == key.size()) {
            item = value;
            return true;
        }
        if (value.type != property::Subtree || value.count % 2 != 0) return false;
        std::size_t pairSize = 0;
        const std::string_view rest = key.substr(component.size() + 1);
        const auto children = static_cast<std::int32_t>(value.count / 2);
        return CPropertyTree::Find(rest, value.data, item, pairSize, children, limit) && pairSize > 0;
    }
    return false;
}

std::size_t CPropertyTree::Get(std::string_view key, ConstPosition start, CPropertyItem& item, ConstPosition limit) {
    std::size_t pairSize = 0;
    return Find(key, start, item, pairSize, topLevel, limit) ? pairSize : 0;
}
