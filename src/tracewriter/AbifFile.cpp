// SPDX-License-Identifier: MIT
#include "tracewriter/AbifFile.h"

#include <cstddef>
#include <new>
#include <string_view>
#include <variant>

#include "platform/Error.h"

namespace {

constexpr std::uint32_t formatVersion = 101;
constexpr std::size_t dataOffset = 128;
constexpr std::size_t entrySize = 28;
constexpr std::size_t inlineSize = 4;

void PutEntryHead(Bytes& out, const std::string& name, std::int32_t number, const AbifElement& element,
                  std::size_t size) {
    PutText(out, name);
    Put32(out, static_cast<std::uint32_t>(number));
    Put16(out, static_cast<std::uint32_t>(element.type));
    Put16(out, element.elementSize);
    Put32(out, element.count);
    Put32(out, static_cast<std::uint32_t>(size));
}

void PutHeader(Bytes& out, std::size_t entries, std::size_t directoryOffset) {
    const AbifElement directory{AbifType::Folder, entrySize, static_cast<std::uint32_t>(entries), {}};
    PutText(out, "ABIF");
    Put16(out, formatVersion);
    PutEntryHead(out, "tdir", 1, directory, entries * entrySize);
    Put32(out, static_cast<std::uint32_t>(directoryOffset));
    Put32(out, 0);
    PutZeros(out, dataOffset - out.size());
}

void PutBytes(Bytes& out, const Bytes& bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

std::string_view AsText(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// True for a value that does not fit into its entry of the directory.
bool LiesOutside(const AbifElement& element) {
    return element.data.size() > inlineSize;
}

}  // namespace

HRESULT CAbifFile::QueryInterface(const Guid& id, void*& interface) {
    interface = nullptr;
    if (id == IAbdWriter::iid) interface = static_cast<IAbdWriter*>(this);
    if (id == IAbdQualities::iid) interface = static_cast<IAbdQualities*>(this);
    return interface ? S_OK : E_NOINTERFACE;
}

HRESULT CAbifFile::OpenFile(const std::string& path, std::int32_t, std::int32_t& opened) {
    opened = 0;
    if (file.IsOpen()) return E_UNEXPECTED;
    if (const platform::Error error = file.Open(path)) return HresultFromErrno(error);
    tags.clear();
    qualities.reset();
    opened = 1;
    return S_OK;
}

HRESULT CAbifFile::AddTag(const std::string& name, std::int32_t number, const CTagValue& value) try {
    if (!file.IsOpen()) return E_UNEXPECTED;
    if (name.size() != 4) return E_INVALIDARG;
    if (!std::holds_alternative<std::monostate>(value))
        tags.insert_or_assign({name, number}, MakeAbifElement(name, value));
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT CAbifFile::CloseFile(std::int32_t& status) try {
    status = 0;
    if (!file.IsOpen()) return E_UNEXPECTED;
    AddDerivedTags();
    Write();
    const platform::Error error = file.Commit();
    status = error ? 0 : 1;
    return HresultFromErrno(error);
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT CAbifFile::SetQualities(std::span<const float> percent) try {
    if (!file.IsOpen()) return E_UNEXPECTED;
    qualities.emplace(percent.begin(), percent.end());
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

// Readers look for qualities in "PCON". The caller passes whole percentages as "QVAL", and exact ones if it has them.
void CAbifFile::AddDerivedTags() {
    const AbifElement exact = qualities ? QualitiesFromPercent(*qualities) : AbifElement{};
    for (const std::int32_t number : {1, 2}) {
        const auto percent = tags.find({"QVAL", number});
        if (percent == tags.end() || percent->second.type != AbifType::Short) continue;
        const bool isExact = qualities && exact.count == percent->second.count;
        tags.try_emplace({"PCON", number}, isExact ? exact : QualitiesFromWholePercent(percent->second));
    }
}

// The values are written as they are, without a copy; only the header and the directory are made here.
void CAbifFile::Write() {
    Bytes header, directory;
    directory.reserve(tags.size() * entrySize);
    std::vector<std::string_view> parts{{}};
    std::size_t next = dataOffset;
    for (const auto& [key, element] : tags) {
        PutEntryHead(directory, key.first, key.second, element, element.data.size());
        if (LiesOutside(element)) {
            Put32(directory, static_cast<std::uint32_t>(next));
            next += element.data.size();
            parts.push_back(AsText(element.data));
        } else {
            PutBytes(directory, element.data);
            PutZeros(directory, inlineSize - element.data.size());
        }
        Put32(directory, 0);
    }
    PutHeader(header, tags.size(), next);
    parts.front() = AsText(header);
    parts.push_back(AsText(directory));
    file.Write(parts);
}
