// SPDX-License-Identifier: MIT
#include "samplestore/PropertyKeys.h"

#include <bit>
#include <sstream>

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
        EXPECT_EQ(back.analysis.basesCalled, bases);
        EXPECT_EQ(back.analysis.strengths, info.analysis.strengths);
    }
}

// The keys as other programs know them, with type, count and first value.
TEST(PropertyKeys, NamesTypesAndValues) {
    StoredTree tree;
    CSampleInfo info = ProcessedInfo(2);
    int number = 0;  // a text of its own for each
    for (std::string* text : {&info.plateId, &info.sampleName, &info.comment, &info.chemistryName,
                              &info.chemistryApplication, &info.beamSplitterA, &info.beamSplitterB,
                              &info.channel[0].base, &info.channel[1].dye, &info.channel[3].filter, &info.barCode,
                              &info.machineId, &info.wellId, &info.analysis.baseCaller, &info.analysis.sequence})
        text->assign(1, 't').append(std::to_string(++number));
    ASSERT_TRUE(tree.Store(info));
    std::istringstream rows(
        "PLATE ID,1,3,t1;SAMPLE NAME,1,3,t2;COMMENT,1,3,t3;CHEMISTRY.NAME,1,3,t4;CHEMISTRY.APPLICATION,1,3,t5;"
        "CHEMISTRY.BEAMSPLITTER A,1,3,t6;CHEMISTRY.BEAMSPLITTER B,1,3,t7;CHEMISTRY.CHANNEL1.BASE,1,3,t8;"
        "CHEMISTRY.CHANNEL2.DYE,1,3,t9;CHEMISTRY.CHANNEL4.FILTER,1,4,t10;BAR CODE,1,4,t11;MACHINE ID,1,4,t12;"
        "WELL ID,1,4,t13;BASE CALLER,1,4,t14;SEQUENCE,1,4,t15;CHEMISTRY.LASER MODE,25,1,200;BASES CALLED,42,1,2;"
        "bases descriptors,42,4,22136;END GOOD SEQUENCE,44,1,1;END SEQUENCE,44,1,2;END TRACE PROCESSING,44,1,3;"
        "END SIGNAL,44,1,4;END RAW DATA,44,1,5;START GOOD SEQUENCE,44,1,-6;START SEQUENCE,44,1,7;"
        "START TRACE PROCESSING,44,1,8;START SIGNAL,44,1,9;START RAW DATA,44,1,10;PEAK POSITIONS,44,2,100;"
        "S/N.ZONES MEASURED,44,1,2;S/N.ZONES START POINTS,44,2,1;S/N.ZONES END POINTS,44,2,3;"
        "S/N.CHANNEL4.SIGNAL,44,2,7;S/N.CHANNEL1.NOISE,44,2,9;SPACING.BASES MEASURED,44,1,1;"
        "SPACING.BASES POSITIONS,44,1,500;SPACING.GAP VALUES,44,1,11;NUMBER OF CURRENT FIX AREAS,44,1,3;"
        "SPECTRAL SEPARATION DEPTH,44,1,4;PSD.NUMBER OF POINTS,44,2,6;QUALITY INDEX,36,1,98.5;QUALITY SCORES,36,2,0;"
        "RELATIVE SIGNAL STRENGTH VALUES,36,8,0;SPACING.FWHM VALUES,36,1,4.5;"
        "SPECTRAL SEPARATION OVERALL QUALITY,36,1,0.75;SPECTRAL SEPARATION QUALITY VALUES,36,4,1");
    for (std::string row; std::getline(rows, row, ';');) {
        CPropertyItem item;
        const std::string key = row.substr(0, row.find(','));
        ASSERT_TRUE(tree.Has(key.c_str(), item)) << key;
        std::ostringstream found;
        found << key << ',' << item.type << ',' << item.count << ',';
        std::int32_t word = item.data[0];
        if (item.type > 25) std::memcpy(&word, item.data, item.type == 42 ? 2 : 4);
        if (item.type == 1)
            found << reinterpret_cast<const char*>(item.data);
        else
            found << (item.type == 36 ? static_cast<double>(std::bit_cast<float>(word)) : word);
        EXPECT_EQ(found.str(), row);
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

TEST(PropertyKeys, OnlyImportedSamplesNameTheirSource) {
    StoredTree plain, imported;
    CSampleInfo info = ProcessedInfo(4);
    ASSERT_TRUE(plain.Store(info));
    EXPECT_FALSE(plain.Has("SOURCE FILE"));
    info.sourceFile = "run 7.ab1";
    ASSERT_TRUE(imported.Store(info));
    info.sourceFile = "other";
    ASSERT_TRUE(imported.Store(info));
    EXPECT_EQ(imported.Read().sourceFile, "run 7.ab1");
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
