#include "samplestore/PropertyKeys.h"

#include "samplestore/PropertyTree.h"
#include "tests/samplestore/SampleFixture.h"

namespace {

using sampletest::RawInfo;

// A tree that grows from one byte.
struct StoredTree {
    std::vector<std::uint8_t> bytes{property::endMarkerByte};
    std::size_t tail = 0;

    bool Store(const CSampleInfo& info) { return StoreKeys(bytes, tail, info); }
    CSampleInfo Read(CSampleInfo info = {}) const {
        ReadKeys(bytes, info);
        return info;
    }
    bool Has(const char* key) const {
        CPropertyItem item;
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

TEST(PropertyKeys, EveryFieldComesBack) {
    for (const std::int16_t bases : {1, 1000, 20000}) {
        StoredTree tree;
        const CSampleInfo info = ProcessedInfo(bases);
        ASSERT_TRUE(tree.Store(info));
        const CSampleInfo back = tree.Read();
        EXPECT_EQ(back.laserMode, 200);
        EXPECT_EQ(back.wellId, info.wellId);
        EXPECT_EQ(back.channel[3].base + back.channel[3].dye + back.channel[3].filter, "Adye3filter3");
        const CAnalysisInfo &a = info.analysis, &b = back.analysis;
        EXPECT_EQ(b.baseCaller, a.baseCaller);
        EXPECT_EQ(b.basesCalled, a.basesCalled);
        EXPECT_EQ((std::vector{b.endGood, b.endSequence, b.endTrace, b.endSignal, b.endRawData}),
                  (std::vector{1, 2, 3, 4, 5}));
        EXPECT_EQ((std::vector{b.startGood, b.startSequence, b.startTrace, b.startSignal, b.startRawData}),
                  (std::vector{-6, 7, 8, 9, 10}));
        EXPECT_EQ(b.qualityIndex, a.qualityIndex);
        EXPECT_EQ(b.sequence, a.sequence);
        EXPECT_EQ(b.peakPositions, a.peakPositions);
        EXPECT_EQ(b.qualityScores, a.qualityScores);
        EXPECT_EQ(b.descriptors, a.descriptors);
        EXPECT_EQ(b.strengths, a.strengths);
        EXPECT_EQ(b.snZoneStarts, a.snZoneStarts);
        EXPECT_EQ(b.snZoneEnds, a.snZoneEnds);
        EXPECT_EQ(b.snSignal, a.snSignal);
        EXPECT_EQ(b.snNoise, a.snNoise);
        EXPECT_EQ(b.spacingFwhm, a.spacingFwhm);
        EXPECT_EQ(b.spacingGaps, a.spacingGaps);
        EXPECT_EQ(b.spacingPositions, a.spacingPositions);
        EXPECT_EQ((std::vector{b.currentFixAreas, b.separationDepth}), (std::vector{3, 4}));
        EXPECT_EQ(b.separationQuality, a.separationQuality);
        EXPECT_EQ(b.separationQualities, a.separationQualities);
        EXPECT_EQ(b.psdPoints, a.psdPoints);
    }
}

TEST(PropertyKeys, StoredTypes) {
    StoredTree tree;
    ASSERT_TRUE(tree.Store(ProcessedInfo(2)));
    CPropertyItem item;
    const auto get = [&](const char* key) {
        return CPropertyTree::Get(key, tree.bytes.data(), item, tree.bytes.data() + tree.bytes.size()) > 0;
    };
    ASSERT_TRUE(get("bases descriptors"));
    EXPECT_EQ(item.type, 42u);
    EXPECT_EQ(item.count, 4u);
    EXPECT_EQ(item.data[0] | item.data[1] << 8, 0x5678);
    ASSERT_TRUE(get("RELATIVE SIGNAL STRENGTH VALUES"));
    EXPECT_EQ(item.type, 36u);
    EXPECT_EQ(item.count, 8u);
    ASSERT_TRUE(get("CHEMISTRY.LASER MODE"));
    EXPECT_EQ(item.type, 25u);
    ASSERT_TRUE(get("BASES CALLED"));
    EXPECT_EQ(item.type, 42u);
}

TEST(PropertyKeys, FailedSampleEndsWithItsReason) {
    CSampleInfo info = ProcessedInfo(4);
    info.analysis.basecallError = "no signal";
    StoredTree fresh;
    ASSERT_TRUE(fresh.Store(info));
    EXPECT_TRUE(fresh.Has("BASE CALLER"));
    EXPECT_FALSE(fresh.Has("BASES CALLED"));
    EXPECT_FALSE(fresh.Has("SEQUENCE"));
    EXPECT_EQ(fresh.Read().analysis.basecallError, "no signal");

    // Over an earlier base call, whose keys stay.
    StoredTree used;
    ASSERT_TRUE(used.Store(ProcessedInfo(4)));
    ASSERT_TRUE(used.Store(info));
    EXPECT_EQ(used.Read().analysis.sequence, "ACGT");
    EXPECT_EQ(used.Read().analysis.basecallError, "no signal");
}

TEST(PropertyKeys, CountsOfZeroSkipTheArrays) {
    StoredTree tree;
    ASSERT_TRUE(tree.Store(ProcessedInfo(1)));
    CSampleInfo info = ProcessedInfo(1);
    info.analysis.snZoneCount = info.analysis.spacingCount = 0;
    info.analysis.snZoneStarts = {77};
    ASSERT_TRUE(tree.Store(info));
    const CAnalysisInfo back = tree.Read().analysis;
    EXPECT_TRUE(tree.Has("S/N.ZONES START POINTS"));
    EXPECT_TRUE(back.snZoneStarts.empty());
    EXPECT_TRUE(back.spacingGaps.empty());
    EXPECT_EQ(back.currentFixAreas, 3);
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
    ASSERT_EQ(back.analysis.strengths.size(), 5u);
    EXPECT_EQ(back.analysis.strengths[0], (BaseStrengths{0, 0, 0, 1}));
    EXPECT_EQ(back.analysis.strengths[3], (BaseStrengths{1, 0, 0, 0}));
    EXPECT_EQ(back.analysis.strengths[4], (BaseStrengths{1, 0, 0, 0}));
}

TEST(PropertyKeys, OtherTypesReadAsAbsent) {
    StoredTree tree;
    tree.bytes.resize(1000);
    CPropertyTree::Position tail = tree.bytes.data();
    const auto* limit = tree.bytes.data() + tree.bytes.size();
    const std::int32_t number = 5;
    CPropertyTree::PutInts("COMMENT", &number, 1, tree.bytes.data(), limit, tail);
    CPropertyTree::PutInts("BASES CALLED", &number, 1, tree.bytes.data(), limit, tail);
    CPropertyTree::PutInts("END SIGNAL", &number, 0, tree.bytes.data(), limit, tail);
    CSampleInfo info;
    info.comment = "old";
    info.analysis.basesCalled = 3;
    info.analysis.endSignal = 4;
    info = tree.Read(info);
    EXPECT_EQ(info.comment, "");
    EXPECT_EQ(info.analysis.basesCalled, 3);
    EXPECT_EQ(info.analysis.endSignal, 4);
}

}  // namespace
