// SPDX-License-Identifier: MIT
#include "samplestore/PropertyTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;

// A tree in a buffer of a given size; checks after each step that the stream is still sound.
class Tree {
  public:
    explicit Tree(std::size_t size = 400000) : buffer(size), tail(buffer.data()) {
        EXPECT_TRUE(CPropertyTree::WriteEnd(buffer.data(), Limit()));
    }

    std::int32_t PutInt(const std::string& key, std::int32_t value) { return Put(key, property::Ints, 1, &value); }
    std::int32_t PutText(const std::string& key, const std::string& text) {
        return Put(key, property::Text, 0, text.c_str());
    }
    std::int32_t Put(const std::string& key, std::uint32_t type, std::uint32_t count, const void* data) {
        const std::int32_t result = CPropertyTree::Put(key, buffer.data(), Limit(), type, count, data, tail);
        EXPECT_EQ(CPropertyTree::FindEnd(buffer.data(), Limit()), tail) << key;
        return result;
    }
    std::size_t Get(const std::string& key, CPropertyItem& item) const {
        return CPropertyTree::Get(key, buffer.data(), item, Limit());
    }
    std::int32_t Int(const std::string& key) const {
        CPropertyItem item;
        if (Get(key, item) == 0 || item.type != property::Ints || item.count != 1) return -1;
        return item.data[0] | item.data[1] << 8 | item.data[2] << 16 | item.data[3] << 24;
    }
    Bytes Stream() const { return Bytes(buffer.data(), static_cast<const std::uint8_t*>(tail) + 1); }
    const std::uint8_t* Limit() const { return buffer.data() + buffer.size(); }

    Bytes buffer;
    CPropertyTree::Position tail;
};

TEST(PropertyTree, StreamOfOneNestedValue) {
    Tree tree;
    CPropertyItem item;
    EXPECT_EQ(tree.Stream(), Bytes{0xFC});
    EXPECT_EQ(tree.Get("A", item), 0u);
    EXPECT_EQ(tree.PutInt("A.B", 7), 10);
    EXPECT_EQ(tree.Stream(), (Bytes{5, 2, 'A', 0, 1, 2, 5, 2, 'B', 0, 0xB1, 4, 7, 0, 0, 0, 0xFC}));
    EXPECT_EQ(tree.Get("A.B", item), 10u);
    EXPECT_EQ(tree.Get("A", item), 6u);
}

TEST(PropertyTree, KeysIgnoreCaseAndStandInOrder) {
    Tree tree;
    for (const char* key : {"plate id", "Zone", "AB", "A_", "PLATE ID"})
        tree.PutInt(key, 1);
    const Bytes stream = tree.Stream();
    std::string text;
    std::copy_if(stream.begin(), stream.end(), std::back_inserter(text), [](int c) { return c >= 'A' && c <= 'z'; });
    EXPECT_EQ(text, "A_ABPLATEIDZone");  // letters compare as lower case, so "_" stands before "B"
    EXPECT_EQ(tree.Int("Plate Id"), 1);
}

TEST(PropertyTree, ConflictsChangeNothing) {
    Tree tree;
    tree.PutInt("A", 1);
    tree.PutText("S", "text");
    tree.PutInt("T.B", 2);
    const Bytes before = tree.Stream();
    CPropertyItem item;
    EXPECT_EQ(tree.PutText("A", "text"), 0);
    EXPECT_EQ(tree.PutInt("S.B", 3), 0);
    EXPECT_EQ(tree.PutInt("T", 3), 0);
    EXPECT_TRUE(CPropertyTree::PutString("A", "x", tree.buffer.data(), tree.Limit(), tree.tail));
    EXPECT_EQ(tree.Get("S.B", item), 0u);
    for (const char* key : {"", ".", "A.", ".A", "T..B", "N."}) {
        EXPECT_EQ(tree.PutInt(key, 3), -1) << key;
        EXPECT_EQ(tree.Get(key, item), 0u) << key;
    }
    EXPECT_EQ(tree.Stream(), before);
}

// However the values come, and come to their lengths, the stream is the same. Nested levels of 300 pairs: their headers
// take a second length byte at the 128th.
TEST(PropertyTree, StoresInAnyOrder) {
    std::vector<std::string> keys;
    for (int i = 0; i < 300; ++i) {
        const std::string name = std::to_string(100 + i);
        keys.insert(keys.end(), {"P." + name, "P.Q." + name, "P.Q.R." + name, "Z" + name});
    }
    std::mt19937 random(5);
    Bytes first;
    for (int round = 0; round < 3; ++round) {
        Tree tree;
        for (const bool last : {false, true}) {
            std::shuffle(keys.begin(), keys.end(), random);
            for (const std::string& key : keys)
                ASSERT_GT(tree.PutText(key, last ? key : std::string(random() % 400, '-')), 0);
        }
        for (const std::string& key : keys) {
            CPropertyItem item;
            ASSERT_GT(tree.Get(key, item), 0u);
            ASSERT_EQ(reinterpret_cast<const char*>(item.data), key);
        }
        if (round == 0) first = tree.Stream();
        EXPECT_EQ(tree.Stream(), first);
    }
}

// However little room there is: nothing is written beyond the limit, and what stood there can still be found.
TEST(PropertyTree, LackOfRoomLeavesASoundTree) {
    for (std::size_t size = 12; size < 60; ++size) {
        Tree tree(size);
        tree.PutInt("M", 5);
        const std::int32_t result = tree.PutInt("M2.Sub.Value", 6);
        EXPECT_EQ(tree.Int("M2.Sub.Value"), result > 0 ? 6 : -1);
        if (result <= 0) {
            EXPECT_EQ(result, -1);
        }
        tree.PutInt("Z", 7);
        EXPECT_EQ(tree.Int("M"), 5);
    }
}

// A million bytes of subtrees in subtrees must not cost a million stack frames.
TEST(PropertyTree, DeepNesting) {
    Tree tree(1200000);
    CPropertyTree::Position at = tree.buffer.data();
    for (int i = 0; i < 180000; ++i) {
        CPropertyTree::WriteItem(at, tree.Limit(), property::Text, 0, "A", true);
        CPropertyTree::WriteItem(at, tree.Limit(), property::Subtree, 2, nullptr, true);
    }
    CPropertyItem item;
    EXPECT_EQ(tree.Get("Z", item), 0u);
    tree.tail = at;
    CPropertyTree::WriteEnd(at, tree.Limit());
    EXPECT_EQ(tree.PutInt("Z", 1), -1);
}

// Damaged streams in memory of exactly their length, so that a sanitizer sees every step beyond it: no operation leaves
// the buffer or loses the end, and a conflict changes nothing.
TEST(PropertyTree, DamagedStreams) {
    Tree good(3000);
    const char* const keys[] = {"A", "B.C", "B.D.E", "B.D.F", "M", "Z.Y"};
    for (const char* key : keys)
        good.PutInt(key, 1);
    int found = 0, refused = 0, stored = 0;
    std::mt19937 random(20240607);
    for (int round = 0; round < 20000; ++round) {
        Bytes bytes = good.Stream();
        for (unsigned i = random() % 4 + 1; i > 0; --i)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random() % 3 ? random() % 8 : random());
        bytes.resize(random() % 4 ? bytes.size() : random() % bytes.size() + 1);
        const std::uint8_t* end = CPropertyTree::FindEnd(bytes.data(), bytes.data() + bytes.size());
        std::size_t tail = end ? static_cast<std::size_t>(end - bytes.data()) : bytes.size();
        if (end) bytes.resize(tail + 1 + random() % 40);
        bytes.shrink_to_fit();
        for (const char* key : keys) {
            CPropertyItem item;
            const std::uint8_t* limit = bytes.data() + bytes.size();
            const auto got = CPropertyTree::Get(key, bytes.data(), item, limit);
            ASSERT_LE(got, bytes.size());
            CPropertyItem same;
            ASSERT_EQ(CPropertyLevel(bytes).Get(key, same), got > 0);
            if (got > 0) {
                ASSERT_EQ(same.data, item.data);
                ASSERT_EQ(same.count, item.count);
            }
            ++(got > 0 ? found : refused);
            if (!end) continue;
            const Bytes before(bytes);
            CPropertyTree::Position at = bytes.data() + tail;
            const std::int32_t result = CPropertyTree::Put(key, bytes.data(), limit, property::Ints, 1, "four", at);
            if (result == 0) {
                ASSERT_EQ(bytes, before);
            }
            stored += result > 0;
            ASSERT_LT(at, limit);
            ASSERT_EQ(*at, property::endMarkerByte);
            tail = static_cast<std::size_t>(at - bytes.data());
        }
    }
    // Neither are all keys refused nor does the damage miss them all.
    EXPECT_GT(found, 10000);
    EXPECT_GT(refused, 10000);
    EXPECT_GT(stored, 10000);
}

}  // namespace
