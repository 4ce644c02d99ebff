// SPDX-License-Identifier: MIT
#include "samplestore/PropertyKeys.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <type_traits>

#include "samplestore/PropertyItem.h"
#include "samplestore/PropertyTree.h"

// Types of the keys, as read and as written:
//
//   text (1)     every text field, "SEQUENCE" and "BASECALL ERROR" among them
//   bytes (25)   "CHEMISTRY.LASER MODE"
//   shorts (42)  "BASES CALLED"; "BASES DESCRIPTORS", the 32-bit descriptors in halves, low half first
//   floats (36)  the qualities and the widths; "RELATIVE SIGNAL STRENGTH VALUES", four per base
//   ints (44)    every other number and array
//
// The lists of keys below serve both directions: reader and writer walk the same list with the same fields.

namespace {

template <class Field>
consteval property::Type TypeOf() {
    if (std::is_same_v<Field, std::uint8_t>) return property::Bytes;
    if (std::is_same_v<Field, std::int16_t>) return property::Shorts;
    if (std::is_same_v<Field, std::int32_t>) return property::Ints;
    if (std::is_same_v<Field, float> || std::is_same_v<Field, BaseStrengths>) return property::Floats;
    throw "no type of the keys";  // does not compile
}

// Only imported samples have it, and it is never changed: the program stores samples that lack it as they are.
constexpr std::string_view sourceKey = "SOURCE FILE";

class KeyReader {
  public:
    explicit KeyReader(std::span<const std::uint8_t> tree) : level(tree) {}

    void operator()(std::string_view key, std::string& text) const {
        text.clear();
        CPropertyItem item;
        if (Find(key, property::Text, item)) text = reinterpret_cast<const char*>(item.data);
    }
    template <class Number>
    void operator()(std::string_view key, Number& value) const {
        CPropertyItem item;
        if (Find(key, TypeOf<Number>(), item) && item.count > 0) std::memcpy(&value, item.data, sizeof value);
    }
    template <class Element>
    void operator()(std::string_view key, std::vector<Element>& values) const {
        Array(key, TypeOf<Element>(), values);
    }
    void Halves(std::string_view key, std::vector<std::int32_t>& values) const { Array(key, property::Shorts, values); }

  private:
    bool Find(std::string_view key, property::Type type, CPropertyItem& item) const {
        return level.Get(key, item) && item.type == type;
    }

    // Complete values only; a partial value at the end of a damaged array is left out.
    template <class Element>
    void Array(std::string_view key, property::Type type, std::vector<Element>& values) const {
        values.clear();
        CPropertyItem item;
        if (!Find(key, type, item)) return;
        values.resize(std::size_t{item.count} * CPropertyTree::ElementSize(type) / sizeof(Element));
        if (!values.empty()) std::memcpy(values.data(), item.data, values.size() * sizeof(Element));
    }

    CPropertyLevel level;
};

// Remembers the first failure and stores nothing after it.
class KeyWriter {
  public:
    KeyWriter(std::vector<std::uint8_t>& bytes, std::size_t& endMarker) : tree(bytes), tail(endMarker) {}

    bool IsGood() const { return isGood; }
    // True when the tree holds a text under the key.
    bool HasText(std::string_view key) const {
        CPropertyItem item;
        return CPropertyTree::Get(key, tree.data(), item, tree.data() + tree.size()) > 0 && item.type == property::Text;
    }

    void operator()(std::string_view key, const std::string& text) {
        Put(key, property::Text, 0, text.c_str(), text.size() + 1);
    }
    template <class Number>
    void operator()(std::string_view key, const Number& value) {
        Values(key, TypeOf<Number>(), &value, 1);
    }
    template <class Element>
    void operator()(std::string_view key, const std::vector<Element>& values) {
        Values(key, TypeOf<Element>(), values.data(), values.size());
    }
    void Halves(std::string_view key, const std::vector<std::int32_t>& values) {
        Values(key, property::Shorts, values.data(), values.size());
    }

  private:
    template <class Element>
    void Values(std::string_view key, property::Type type, const Element* values, std::size_t count) {
        const std::size_t size = count * sizeof(Element);
        Put(key, type, static_cast<std::uint32_t>(size / CPropertyTree::ElementSize(type)), values, size);
    }

    void Put(std::string_view key, property::Type type, std::uint32_t count, const void* data, std::size_t size) {
        isGood = isGood && size <= property::maxLength;
        if (!isGood) return;
        EnsureRoom(tree, key, tail, std::max<std::size_t>(size, 1));
        CPropertyTree::Position end = tree.data() + tail;
        isGood = CPropertyTree::Put(key, tree.data(), tree.data() + tree.size(), type, count, data, end) >= 0;
        tail = static_cast<std::size_t>(end - tree.data());
    }

    std::vector<std::uint8_t>& tree;
    std::size_t& tail;
    bool isGood = true;
};

// --- The keys. Info is CSampleInfo or const CSampleInfo, Analysis likewise.

template <class Access, class Info>
void WalkSample(Access& access, Info& info) {
    access("PLATE ID", info.plateId);
    access("SAMPLE NAME", info.sampleName);
    access("COMMENT", info.comment);
    access("CHEMISTRY.NAME", info.chemistryName);
    access("CHEMISTRY.APPLICATION", info.chemistryApplication);
    access("CHEMISTRY.BEAMSPLITTER A", info.beamSplitterA);
    access("CHEMISTRY.BEAMSPLITTER B", info.beamSplitterB);
    access("CHEMISTRY.LASER MODE", info.laserMode);
}

template <class Access, class Channel>
void WalkChannel(Access& access, std::size_t number, Channel& base, Channel& dye, Channel& filter) {
    const std::string channel = "CHEMISTRY.CHANNEL" + std::to_string(number);
    access(channel + ".BASE", base);
    access(channel + ".DYE", dye);
    access(channel + ".FILTER", filter);
}

template <class Access, class Info>
void WalkPlace(Access& access, Info& info) {
    access("BAR CODE", info.barCode);
    access("MACHINE ID", info.machineId);
    access("WELL ID", info.wellId);
}

template <class Access, class Analysis>
void WalkBases(Access& access, Analysis& analysis) {
    access("BASES CALLED", analysis.basesCalled);
    access("END GOOD SEQUENCE", analysis.endGood);
    access("END SEQUENCE", analysis.endSequence);
    access("END TRACE PROCESSING", analysis.endTrace);
    access("END SIGNAL", analysis.endSignal);
    access("END RAW DATA", analysis.endRawData);
    access("PEAK POSITIONS", analysis.peakPositions);
    access("QUALITY INDEX", analysis.qualityIndex);
    access("QUALITY SCORES", analysis.qualityScores);
    access("SEQUENCE", analysis.sequence);
    access("RELATIVE SIGNAL STRENGTH VALUES", analysis.strengths);
    access.Halves("BASES DESCRIPTORS", analysis.descriptors);
}

template <class Access, class Analysis>
void WalkStarts(Access& access, Analysis& analysis) {
    access("START GOOD SEQUENCE", analysis.startGood);
    access("START SEQUENCE", analysis.startSequence);
    access("START TRACE PROCESSING", analysis.startTrace);
    access("START SIGNAL", analysis.startSignal);
    access("START RAW DATA", analysis.startRawData);
}

template <class Access, class Analysis>
void WalkMeasurements(Access& access, Analysis& analysis) {
    access("S/N.ZONES MEASURED", analysis.snZoneCount);
    if (analysis.snZoneCount > 0) {
        access("S/N.ZONES START POINTS", analysis.snZoneStarts);
        access("S/N.ZONES END POINTS", analysis.snZoneEnds);
        for (std::size_t i = 0; i < channelCount; ++i)
            access("S/N.CHANNEL" + std::to_string(i + 1) + ".SIGNAL", analysis.snSignal[i]);
        for (std::size_t i = 0; i < channelCount; ++i)
            access("S/N.CHANNEL" + std::to_string(i + 1) + ".NOISE", analysis.snNoise[i]);
    }
    access("SPACING.BASES MEASURED", analysis.spacingCount);
    if (analysis.spacingCount > 0) {
        access("SPACING.BASES POSITIONS", analysis.spacingPositions);
        access("SPACING.GAP VALUES", analysis.spacingGaps);
        access("SPACING.FWHM VALUES", analysis.spacingFwhm);
    }
    access("NUMBER OF CURRENT FIX AREAS", analysis.currentFixAreas);
    access("SPECTRAL SEPARATION OVERALL QUALITY", analysis.separationQuality);
    access("SPECTRAL SEPARATION QUALITY VALUES", analysis.separationQualities);
    access("SPECTRAL SEPARATION DEPTH", analysis.separationDepth);
    access("PSD.NUMBER OF POINTS", analysis.psdPoints);
}

// Files of old base callers contain letters only. Each base gets descriptor 0 and all its strength in its own channel.
void MakeUpPerBaseData(CSampleInfo& info) {
    for (const char letter : info.analysis.sequence) {
        std::size_t channel = 0;
        while (channel < channelCount && info.channelBase[channel][0] != letter)
            ++channel;
        BaseStrengths strengths{};
        strengths[channel < channelCount ? channel : 0] = 1.0f;
        info.analysis.descriptors.push_back(0);
        info.analysis.strengths.push_back(strengths);
    }
}

}  // namespace

void ReadKeys(std::span<const std::uint8_t> tree, CSampleInfo& info) {
    const KeyReader reader(tree);
    CAnalysisInfo& analysis = info.analysis;
    WalkSample(reader, info);
    for (std::size_t i = 0; i < channelCount; ++i)
        WalkChannel(reader, i + 1, info.channel[i].base, info.channel[i].dye, info.channel[i].filter);
    WalkPlace(reader, info);
    reader(sourceKey, info.sourceFile);
    reader("BASE CALLER", analysis.baseCaller);
    reader("BASECALL ERROR", analysis.basecallError);
    WalkBases(reader, analysis);
    if (analysis.descriptors.empty()) MakeUpPerBaseData(info);
    WalkStarts(reader, analysis);
    analysis.snZoneCount = 0;
    analysis.spacingCount = 0;
    WalkMeasurements(reader, analysis);
}

bool StoreKeys(std::vector<std::uint8_t>& tree, std::size_t& tail, const CSampleInfo& info) {
    KeyWriter writer(tree, tail);
    const CAnalysisInfo& analysis = info.analysis;
    WalkSample(writer, info);
    for (std::size_t i = 0; i < channelCount; ++i) {
        const CChannelInfo& channel = info.channel[i];
        const std::string base = channel.base.empty() ? FieldText(info.channelBase[i]) : channel.base;
        WalkChannel(writer, i + 1, base, channel.dye, channel.filter);
    }
    WalkPlace(writer, info);
    if (!info.sourceFile.empty() && !writer.HasText(sourceKey)) writer(sourceKey, info.sourceFile);
    if (!writer.IsGood()) return false;
    writer("BASE CALLER", analysis.baseCaller);
    if (!analysis.basecallError.empty()) {
        // Stored even if the name could not be: the reason of the failure matters more.
        KeyWriter reason(tree, tail);
        reason("BASECALL ERROR", analysis.basecallError);
        return reason.IsGood();
    }
    // The error of an earlier call would make this call look failed.
    if (writer.HasText("BASECALL ERROR")) writer("BASECALL ERROR", analysis.basecallError);
    WalkBases(writer, analysis);
    WalkStarts(writer, analysis);
    WalkMeasurements(writer, analysis);
    return writer.IsGood();
}

void EnsureRoom(std::vector<std::uint8_t>& tree, std::string_view key, std::size_t tail, std::size_t dataSize) {
    const std::size_t keySize = CPropertyTree::ItemSize(property::Text, 0, std::string(key).c_str());
    const auto dots = static_cast<std::size_t>(std::count(key.begin(), key.end(), '.'));
    const std::size_t need = keySize + 4 * (dots + 2 * dataSize);
    if (tail + need + 1 <= tree.size()) return;
    constexpr std::size_t minGrowth = 2048;
    tree.resize((tree.size() + std::max(2 * need, minGrowth) + 3) / 4 * 4);
}
