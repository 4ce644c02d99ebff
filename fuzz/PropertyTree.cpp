// SPDX-License-Identifier: MIT
// A property tree: is read and stored again in place. The stored texts must be read back unchanged.
#include "samplestore/PropertyTree.h"
#include "Fuzz.h"
#include "samplestore/PropertyKeys.h"
#include "samplestore/SampleInfo.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CSampleInfo info;
    ReadKeys({data, size}, info);

    std::vector<std::uint8_t> tree(data, data + size);
    const auto* const end = CPropertyTree::FindEnd(tree.data(), tree.data() + tree.size());
    if (!end) return 0;
    auto tail = static_cast<std::size_t>(end - tree.data());
    if (!StoreKeys(tree, tail, info)) return 0;
    fuzz::Demand(tail < tree.size() && tree[tail] == property::endMarkerByte);
    fuzz::Demand(CPropertyTree::FindEnd(tree.data(), tree.data() + tree.size()) == tree.data() + tail);

    // A key that exists with another type is not changed, so only texts that were read from the tree must stay.
    CSampleInfo again;
    ReadKeys(tree, again);
    fuzz::Demand(info.sampleName.empty() || again.sampleName == info.sampleName);
    fuzz::Demand(info.analysis.sequence.empty() || again.analysis.sequence == info.analysis.sequence);
    return 0;
}
