// SPDX-License-Identifier: MIT
#include "samplestore/PropertyKeys.h"

#include "SampleFixture.h"
#include "samplestore/PropertyTree.h"

namespace {

using namespace sampletest;

// A tree that grows from one byte.
struct StoredTree {
    std::vector<std::uint8_t> bytes{property::endMarkerByte};
    std::size_t tail = 0;

    bool Store(const CSampleInfo& info) { return StoreKeys(bytes, tail, info); }
    CSampleInfo Read(CSampleInfo info = {}) const {
        ReadKeys(bytes, info);
        return info;
    }
    bool Has(const char* key, CPropertyItem&& item = {}) const { return Has(key, item); }
    bool Has(const char* key, CPropertyItem& item) const {
        return CPropertyTree::Get(key, bytes.data(), item, bytes.data() + bytes.size()) > 0;
    }
};

CSampleInfo ProcessedInfo(std::int16_t bases) {
    CSampleInfo info = RawInfo(10);
    info.laserMode = 200;
    CAnalysisInfo& a = info.analysis;
    a.baseCaller = "caller";
    a.basesCalled = bases;
    a.endGood = 1, a.endSequence = 2, a.endTrace = 3, a.endSignal = 4, a.endRawData = 5;
    a.startGood = -6, a.startSequence = 7, a.startTrace = 8, a.startSignal = 9, a.startRawData = 10;
    a.qualityIndex = 98.5f;
    for (int i = 0; i < bases; ++i) {
        const auto f = static_cast<float>(i);
        a.sequence += "ACGT"[i % 4];
        a.peakPositions.push_back(100 + 12 * i);
        a.qualityScores.push_back(f / 3);
        a.descriptors.push_back(0x12345678 + i);
        a.strengths.push_back({f, -f, 0.5f, 1.0f});
    }
    a.snZoneCount = 2;
    a.snZoneStarts = {1, 2}, a.snZoneEnds = {3, 4};
    a.snSignal = {{{1, 2}, {3, 4}, {5, 6}, {7, 8}}};
    a.snNoise = {{{9, 8}, {7, 6}, {5, 4}, {3, 2}}};
    a.spacingCount = 1;
    a.spacingFwhm = {4.5f}, a.spacingGaps = {11}, a.spacingPositions = {500};
    a.currentFixAreas = 3, a.separationDepth = 4, a.separationQuality = 0.75f;
    a.separationQualities = {1, 2, 3, 4};
    a.psdPoints = {6, 7};
    return info;
}

// What was read stores as the same bytes, whatever the size of the arrays: nothing was lost or mixed up on the way.
TEST(PropertyKeys, EveryFieldComesBack) {
    for (const std::int16_t bases : {1, 1000, 20000}) {
        StoredTree tree, again;
        const CSampleInfo info = ProcessedInfo(bases);
        ASSERT_TRUE(tree.Store(info));
        const CSampleInfo back = tree.Read();
        ASSERT_TRUE(again.Store(back));
        EXPECT_EQ(again.bytes, tree.bytes);
        const CAnalysisInfo &a = info.analysis, &b = back.analysis;
        EXPECT_EQ(back.channel[3].base + back.channel[3].dye + back.channel[3].filter, "Adye3filter3");
        EXPECT_EQ(b.basesCalled, bases);
        EXPECT_EQ((std::vector{b.startGood, b.endGood, b.startSignal, b.endRawData}), (std::vector{-6, 1, 9, 5}));
        EXPECT_EQ(b.descriptors, a.descriptors);
        EXPECT_EQ(b.strengths, a.strengths);
    }
}

// The keys as other programs know them, with type, count and first value.
TEST(PropertyKeys, NamesTypesAndValues) {
    StoredTree tree;
    CSampleInfo info = ProcessedInfo(2);
    const std::pair<std::string*, const char*> texts[] = {
        {&info.plateId, "PLATE ID"}, {&info.sampleName, "SAMPLE NAME"}, {&info.comment, "COMMENT"},
        {&info.chemistryName, "CHEMISTRY.NAME"}, {&info.chemistryApplication, "CHEMISTRY.APPLICATION"},
        {&info.beamSplitterA, "CHEMISTRY.BEAMSPLITTER A"}, {&info.beamSplitterB, "CHEMISTRY.BEAMSPLITTER B"},
        {&info.channel[0].base, "CHEMISTRY.CHANNEL1.BASE"}, {&info.channel[1].dye, "CHEMISTRY.CHANNEL2.DYE"},
        {&info.channel[3].filter, "CHEMISTRY.CHANNEL4.FILTER"}, {&info.barCode, "BAR CODE"},
        {&info.machineId, "MACHINE ID"}, {&info.wellId, "WELL ID"}, {&info.analysis.baseCaller, "BASE CALLER"},
        {&info.analysis.sequence, "SEQUENCE"}};
    for (const auto& [field, key] : texts)
        *field = key;
    ASSERT_TRUE(tree.Store(info));
    for (const auto& [field, key] : texts) {
        CPropertyItem item;
        ASSERT_TRUE(tree.Has(key, item)) << key;
        EXPECT_EQ(item.type, 1u) << key;
        EXPECT_STREQ(reinterpret_cast<const char*>(item.data), key);
    }
    const std::tuple<const char*, std::uint32_t, std::uint32_t, double> numbers[] = {
        {"CHEMISTRY.LASER MODE", 25, 1, 200}, {"BASES CALLED", 42, 1, 2}, {"bases descriptors", 42, 4, 0x5678},
        {"END GOOD SEQUENCE", 44, 1, 1}, {"END SEQUENCE", 44, 1, 2}, {"END TRACE PROCESSING", 44, 1, 3},
        {"END SIGNAL", 44, 1, 4}, {"END RAW DATA", 44, 1, 5}, {"START GOOD SEQUENCE", 44, 1, -6},
        {"START SEQUENCE", 44, 1, 7}, {"START TRACE PROCESSING", 44, 1, 8}, {"START SIGNAL", 44, 1, 9},
        {"START RAW DATA", 44, 1, 10}, {"PEAK POSITIONS", 44, 2, 100}, {"S/N.ZONES MEASURED", 44, 1, 2},
        {"S/N.ZONES START POINTS", 44, 2, 1}, {"S/N.ZONES END POINTS", 44, 2, 3}, {"S/N.CHANNEL4.SIGNAL", 44, 2, 7},
        {"S/N.CHANNEL1.NOISE", 44, 2, 9}, {"SPACING.BASES MEASURED", 44, 1, 1}, {"SPACING.BASES POSITIONS", 44, 1, 500},
        {"SPACING.GAP VALUES", 44, 1, 11}, {"NUMBER OF CURRENT FIX AREAS", 44, 1, 3},
        {"SPECTRAL SEPARATION DEPTH", 44, 1, 4}, {"PSD.NUMBER OF POINTS", 44, 2, 6}, {"QUALITY INDEX", 36, 1, 98.5},
        {"QUALITY SCORES", 36, 2, 0}, {"RELATIVE SIGNAL STRENGTH VALUES", 36, 8, 0}, {"SPACING.FWHM VALUES", 36, 1, 4.5},
        {"SPECTRAL SEPARATION OVERALL QUALITY", 36, 1, 0.75}, {"SPECTRAL SEPARATION QUALITY VALUES", 36, 4, 1}};
    for (const auto& [key, type, count, value] : numbers) {
        CPropertyItem item;
        ASSERT_TRUE(tree.Has(key, item)) << key;
        EXPECT_EQ(std::pair(item.type, item.count), std::pair(type, count)) << key;
        std::int32_t word = item.data[0];
        if (type != 25) std::memcpy(&word, item.data, type == 42 ? 2 : 4);
        EXPECT_EQ(type == 36 ? static_cast<double>(std::bit_cast<float>(word)) : word, value) << key;
    }
}

TEST(PropertyKeys, FailedSampleEndsWithItsReason) {
    CSampleInfo info = ProcessedInfo(4);
    info.analysis.basecallError = "no signal";
    StoredTree fresh, used;
    ASSERT_TRUE(fresh.Store(info));
    EXPECT_TRUE(fresh.Has("BASE CALLER"));
    EXPECT_FALSE(fresh.Has("BASES CALLED"));
    EXPECT_EQ(fresh.Read().analysis.basecallError, "no signal");

    // Over an earlier base call, whose keys stay.
    ASSERT_TRUE(used.Store(ProcessedInfo(4)));
    ASSERT_TRUE(used.Store(info));
    EXPECT_EQ(used.Read().analysis.sequence, "ACGT");
    EXPECT_EQ(used.Read().analysis.basecallError, "no signal");
}

TEST(PropertyKeys, OldFilesGetPerBaseData) {
    StoredTree tree;
    CSampleInfo info = RawInfo(1);
    info.channel[0].base.clear();
    info.analysis.sequence = "ACGTx";
    ASSERT_TRUE(tree.Store(info));
    const CSampleInfo back = tree.Read(info);
    EXPECT_EQ(back.channel[0].base, "T");  // from channelBase
    EXPECT_EQ(back.analysis.descriptors, std::vector<std::int32_t>(5, 0));
    EXPECT_EQ(back.analysis.strengths,
              (std::vector<BaseStrengths>{{0, 0, 0, 1}, {0, 0, 1, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}, {1, 0, 0, 0}}));
}

}  // namespace
