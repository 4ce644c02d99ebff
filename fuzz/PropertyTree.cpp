// A property tree: read, and stored again in place. What was stored is read back as it was.
#include "samplestore/PropertyTree.h"
#include "Fuzz.h"
#include "samplestore/PropertyKeys.h"

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

    // A key that is there with another type is left alone, so only texts that came out of the tree must stay.
    CSampleInfo again;
    ReadKeys(tree, again);
    fuzz::Demand(info.sampleName.empty() || again.sampleName == info.sampleName);
    fuzz::Demand(info.analysis.sequence.empty() || again.analysis.sequence == info.analysis.sequence);
    return 0;
}
