// SPDX-License-Identifier: MIT
#include "tracewriter/ScfFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <new>

#include "platform/AtomicFile.h"

namespace {

constexpr std::uint32_t headerSize = 128;
constexpr std::size_t spareSize = 72;
constexpr std::uint32_t bytesPerScan = 8;
constexpr std::uint32_t bytesPerBase = 12;
constexpr std::uint32_t sampleBytes = 2;
constexpr std::int32_t maxScans = 1 << 24;
constexpr std::int32_t maxBases = 1 << 20;  // also the most that SetBaseCount makes room for

std::uint16_t ToSample(std::int32_t value) {
    return static_cast<std::uint16_t>(std::clamp(value, 0, 0xFFFF));
}

std::uint8_t ToProbability(std::int32_t value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0, 0xFF));
}

// Each value, less twice the value before it, plus the value before that. A smooth curve becomes a series of small
// numbers, which compress well.
void PutDifferences(Bytes& out, const std::vector<std::uint16_t>& curve) {
    std::vector<std::uint16_t> differences(curve.size());
    // Reading the earlier values from the curve again, instead of keeping them in variables, lets the compiler process
    // several scans at once.
    for (std::size_t i = 2; i < curve.size(); ++i)
        differences[i] = ToBigEndian(curve[i] - 2u * curve[i - 1] + curve[i - 2]);
    if (!curve.empty()) differences[0] = ToBigEndian(curve[0]);
    if (curve.size() > 1) differences[1] = ToBigEndian(curve[1] - 2u * curve[0]);
    const auto bytes = std::as_bytes(std::span(differences));
    out.insert(out.end(), bytes.begin(), bytes.end());
}

}  // namespace

HRESULT CScfFile::QueryInterface(const Guid& id, void*& interface) {
    interface = nullptr;
    if (id == IScfWriter::iid) interface = static_cast<IScfWriter*>(this);
    if (id == IScfSamples::iid) interface = static_cast<IScfSamples*>(this);
    return interface ? S_OK : E_NOINTERFACE;
}

HRESULT CScfFile::SetSampleCount(std::int32_t count) try {
    if (count > maxScans) return HresultFromErrno(EFBIG);
    for (auto& curve : curves)
        curve.assign(static_cast<std::size_t>(std::max(count, 0)), 0);
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT CScfFile::SetBaseCount(std::int32_t count) try {
    bases.reserve(static_cast<std::size_t>(std::clamp(count, 0, maxBases)));
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT CScfFile::SetSampleSize(std::int32_t bits) {
    return bits == 8 * static_cast<std::int32_t>(sampleBytes) ? S_OK : E_INVALIDARG;
}

HRESULT CScfFile::SetSample(std::int32_t a, std::int32_t c, std::int32_t g, std::int32_t t, std::int32_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= curves[0].size()) return DISP_E_BADINDEX;
    const std::size_t scan = static_cast<std::size_t>(index);
    curves[0][scan] = ToSample(a);
    curves[1][scan] = ToSample(c);
    curves[2][scan] = ToSample(g);
    curves[3][scan] = ToSample(t);
    return S_OK;
}

HRESULT CScfFile::SetSamples(const std::array<std::span<const std::int32_t>, 4>& stretches, std::int32_t index) {
    const std::size_t count = stretches[0].size();
    for (const auto& stretch : stretches)
        if (stretch.size() != count) return E_INVALIDARG;
    if (index < 0 || count > curves[0].size() || static_cast<std::size_t>(index) > curves[0].size() - count)
        return DISP_E_BADINDEX;
    for (std::size_t i = 0; i < curves.size(); ++i)
        std::transform(stretches[i].begin(), stretches[i].end(), curves[i].begin() + index, ToSample);
    return S_OK;
}

HRESULT CScfFile::AddBase(std::int32_t peakIndex, std::int32_t probA, std::int32_t probC, std::int32_t probG,
                          std::int32_t probT, std::uint32_t letter) try {
    if (bases.size() >= static_cast<std::size_t>(maxBases)) return HresultFromErrno(EFBIG);
    bases.push_back({static_cast<std::uint32_t>(std::max(peakIndex, 0)),
                     {ToProbability(probA), ToProbability(probC), ToProbability(probG), ToProbability(probT)},
                     static_cast<std::uint8_t>(letter & 0xFF)});
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT CScfFile::AddComment(const std::string& comment) try {
    comments.append(comment, 0, comment.find('\0'));
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT CScfFile::SaveFile(const std::string& path) try {
    platform::AtomicFile file;
    if (const platform::Error error = file.Open(path)) return HresultFromErrno(error);
    file.Write(Encode());
    return HresultFromErrno(file.Commit());
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

Bytes CScfFile::Encode() const {
    Bytes out;
    out.reserve(headerSize + bytesPerScan * curves[0].size() + bytesPerBase * bases.size() + comments.size() + 1);
    PutHeader(out);
    for (const auto& curve : curves)
        PutDifferences(out, curve);
    PutBases(out);
    PutText(out, comments);
    Put8(out, 0);
    return out;
}

void CScfFile::PutHeader(Bytes& out) const {
    const std::uint32_t scans = static_cast<std::uint32_t>(curves[0].size());
    const std::uint32_t baseCount = static_cast<std::uint32_t>(bases.size());
    const std::uint32_t commentSize = static_cast<std::uint32_t>(comments.size() + 1);
    const std::uint32_t basesOffset = headerSize + bytesPerScan * scans;
    const std::uint32_t commentsOffset = basesOffset + bytesPerBase * baseCount;
    PutText(out, ".scf");
    for (const std::uint32_t field : {scans, headerSize, baseCount, 0u, 0u, basesOffset, commentSize, commentsOffset})
        Put32(out, field);
    PutText(out, "3.00");
    for (const std::uint32_t field : {sampleBytes, 0u, 0u, commentsOffset + commentSize})
        Put32(out, field);
    PutZeros(out, spareSize);
}

void CScfFile::PutBases(Bytes& out) const {
    for (const Base& base : bases)
        Put32(out, base.peakIndex);
    for (std::size_t i = 0; i < 4; ++i)
        for (const Base& base : bases)
            Put8(out, base.probabilities[i]);
    for (const Base& base : bases)
        Put8(out, base.letter);
    PutZeros(out, 3 * bases.size());
}
