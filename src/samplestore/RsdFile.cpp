// SPDX-License-Identifier: MIT
#include "samplestore/RsdFile.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <new>
#include <tuple>
#include <utility>

#include "platform/Error.h"
#include "samplestore/PropertyItem.h"
#include "samplestore/PropertyKeys.h"
#include "samplestore/PropertyTree.h"
#include "samplestore/XorWords.h"

using platform::Error;
using platform::success;

namespace {

constexpr std::uint32_t maxTreeSize = 1000000;
constexpr std::size_t newTreeSize = 2048;

std::uint32_t RoundUp4(std::uint32_t size) {
    constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max() - 3;
    return size >= largest ? largest : (size + 3) / 4 * 4;
}

// Fills `out` from the current position; a file that ends before that is malformed.
Error ReadAll(platform::File& file, std::span<std::byte> out) {
    std::size_t got = 0;
    if (const Error error = file.Read(out, got)) return error;
    return got == out.size() ? success : CRsdFile::malformed;
}

}  // namespace

void CRsdFile::Reset() {
    readOnly = infoDirty = scansDirty = false;
    info = {};
    trailer.reset();
    tree.clear();
    scans.clear();
}

std::string CRsdFile::Reason(Error error) {
    if (error == malformed || error == EINVAL) return "Not a well-formed sample file";
    if (error == treeTooLarge) return "The property tree is too large";
    if (error == wrongChecksum) return "The checksum is wrong";
    if (error == wrongScanCount) return "The number of scans is not the recorded one";
    return error.Text();
}

Error CRsdFile::Open(const std::string& path, bool forReading) {
    if (file.IsOpen()) return notStored;
    const auto mode = forReading ? platform::OpenMode::Read : platform::OpenMode::Update;
    if (const Error error = file.Open(path, mode)) return error;
    Reset();
    readOnly = forReading;
    return success;
}

Error CRsdFile::ReadTrailer() {
    if (trailer) return success;
    if (const Error error = file.SeekFromEnd(-static_cast<std::int64_t>(CRsdTrailer::size))) return error;
    auto image = std::make_unique<CRsdTrailer>();
    if (const Error error = ReadAll(file, std::as_writable_bytes(std::span(image->bytes)))) return error;
    if (!image->IsVersionValid()) return malformed;
    storedTreeSize = image->TreeSize();
    image->SetSizes(image->TotalSize(), RoundUp4(image->TreeSize()));
    trailer = std::move(image);
    return success;
}

bool CRsdFile::IsSurelySample() {
    std::int64_t length = 0;
    if (ReadTrailer() || file.Length(length)) return false;
    const std::uint32_t total = trailer->TotalSize();
    if (total == 0) return storedTreeSize == 0;
    return total == std::uint64_t{storedTreeSize} + CRsdTrailer::size && total <= length;
}

// Moves to `size` bytes before the end; a shorter file is malformed.
Error CRsdFile::SeekFromEnd(std::int64_t size) {
    const Error error = file.SeekFromEnd(-size);
    return error == EINVAL ? malformed : error;
}

// Reads the tree block described by the trailer. Checks that the block is inside the file before it allocates memory
// for it.
Error CRsdFile::ReadTree() {
    if (trailer->TreeSize() > trailer->TotalSize()) return malformed;
    if (const Error error = SeekFromEnd(trailer->TotalSize())) return error;
    tree.resize(trailer->TreeSize());
    return ReadAll(file, std::as_writable_bytes(std::span(tree)));
}

Error CRsdFile::ReadInfo(CSampleInfo& out) {
    if (!infoDirty) {
        if (const Error error = ReadTrailer()) return error;
        trailer->Decode(info);
        if (trailer->TreeSize() > maxTreeSize) return treeTooLarge;
        if (trailer->TreeSize() != 0) {
            if (const Error error = ReadTree()) return error;
            ReadKeys(tree, info);
        }
    }
    out = info;
    return success;
}

Error CRsdFile::WriteInfo(const CSampleInfo& newInfo) {
    if (readOnly) return isReadOnly;
    info = newInfo;
    infoDirty = true;
    return success;
}

Error CRsdFile::GetScanCount(std::uint32_t& count) {
    std::uint64_t records = scans.size();
    if (!scansDirty) {
        if (const Error error = ReadTrailer()) return error;
        std::int64_t length = 0;
        if (const Error error = file.Length(length)) return error;
        length -= trailer->TotalSize() != 0 ? trailer->TotalSize() : CRsdTrailer::size;
        if (length < 0) return malformed;
        records = static_cast<std::uint64_t>(length) / scanRecordSize;
    }
    if (records > std::numeric_limits<std::uint32_t>::max()) return malformed;
    count = static_cast<std::uint32_t>(records);
    return success;
}

Error CRsdFile::ReadScans(std::span<ScanRecord> destination) {
    if (scansDirty) {
        if (destination.size() > scans.size()) return malformed;
        std::copy_n(scans.begin(), destination.size(), destination.begin());
        return success;
    }
    std::uint32_t count = 0;
    if (const Error error = GetScanCount(count)) return error;
    if (destination.size() > count) return malformed;
    if (destination.empty()) return success;
    if (const Error error = file.SeekSet(0)) return error;
    return ReadAll(file, std::as_writable_bytes(destination));
}

// Exclusive-or of all words of the file, as it is on the disk.
Error CRsdFile::XorFile(std::uint32_t& words) {
    std::vector<std::byte> piece(std::size_t{1} << 18);
    std::size_t got = piece.size();
    words = 0;
    if (const Error error = file.SeekSet(0)) return error;
    while (got == piece.size()) {
        if (const Error error = file.Read(piece, got)) return error;
        words ^= XorWords(std::span(piece).first(got));
    }
    return success;
}

Error CRsdFile::Verify() {
    if (const Error error = ReadTrailer()) return error;
    std::int64_t length = 0;
    if (const Error error = file.Length(length)) return error;
    const std::int64_t tail = std::int64_t{trailer->TreeSize()} + static_cast<std::int64_t>(CRsdTrailer::size);
    const bool isTailGood = trailer->TotalSize() == tail || (trailer->TotalSize() == 0 && trailer->TreeSize() == 0);
    constexpr auto record = static_cast<std::int64_t>(scanRecordSize);
    if (!isTailGood || length < tail || (length - tail) % record != 0) return malformed;
    std::uint32_t words = 0;
    if (const Error error = XorFile(words)) return error;
    if (words != 0) return wrongChecksum;
    CSampleInfo described;
    trailer->Decode(described);
    return (length - tail) / record == std::int64_t{described.scanCount} ? success : wrongScanCount;
}

Error CRsdFile::WriteScans(std::vector<ScanRecord> records) {
    if (readOnly) return isReadOnly;
    scans = std::move(records);
    scansDirty = true;
    return success;
}

// Reads the tree and computes `checksumPart`, what the tree and the trailer in the file contribute to the checksum.
// Without a tree block that is 0 and `tree` stays as it is.
Error CRsdFile::LoadTree(std::uint32_t& checksumPart) {
    checksumPart = 0;
    if (const Error error = ReadTrailer()) return error;
    if (trailer->TotalSize() == 0 || trailer->TreeSize() == 0) return success;
    if (const Error error = ReadTree()) return error;
    checksumPart = XorWords(std::as_bytes(std::span(tree))) ^ trailer->ChecksumPart();
    return success;
}

// Derives `scansXor`, the checksum of the scan block, from the stored checksum, so that the scans need not be read, and
// moves to where tree and trailer will be written.
Error CRsdFile::SeekToTree(std::uint32_t& scansXor) {
    std::uint32_t checksumPart = 0;
    if (const Error error = LoadTree(checksumPart)) return error;
    scansXor = trailer->Checksum() ^ checksumPart;
    return SeekFromEnd(trailer->TotalSize() != 0 ? trailer->TotalSize() : CRsdTrailer::size);
}

// Writes the new scan block and sets `scansXor` to its checksum. The old tree and trailer follow it, unless StoreInfo
// is going to write new ones.
Error CRsdFile::StoreScans(std::uint32_t& scansXor) {
    std::uint32_t checksumPart = 0;
    if (const Error error = LoadTree(checksumPart)) return error;
    const auto block = std::as_bytes(std::span(scans));
    scansXor = XorWords(block);
    if (const Error error = file.SeekSet(0)) return error;
    if (const Error error = file.Write(block)) return error;
    if (infoDirty) return success;
    trailer->SetChecksum(scansXor ^ checksumPart);
    return WriteTail(tree.size());
}

Error CRsdFile::StoreInfo(std::uint32_t scansXor) {
    trailer->Encode(info);
    const std::uint8_t* end = CPropertyTree::FindEnd(tree.data(), tree.data() + tree.size());
    if (!end) {
        // No tree yet, or a damaged one without an end marker.
        tree.assign(newTreeSize, 0);
        tree.front() = property::endMarkerByte;
        end = tree.data();
    }
    auto tail = static_cast<std::size_t>(end - tree.data());
    if (!StoreKeys(tree, tail, info)) return notStored;

    const std::size_t used = tail + 1;
    const std::size_t treeSize = (used + 3) / 4 * 4;
    if (treeSize > maxTreeSize) return notStored;  // ReadInfo would reject it
    tree.resize(std::max(tree.size(), treeSize));
    std::fill(tree.begin() + static_cast<std::ptrdiff_t>(used), tree.begin() + static_cast<std::ptrdiff_t>(treeSize),
              std::uint8_t{0});
    const auto size = static_cast<std::uint32_t>(treeSize);
    trailer->SetSizes(size + static_cast<std::uint32_t>(CRsdTrailer::size), size);
    trailer->SetChecksum(trailer->ChecksumPart() ^ XorWords(std::as_bytes(std::span(tree)).first(treeSize)) ^ scansXor);
    return WriteTail(treeSize);
}

// Writes the first `treeSize` bytes of the tree and the trailer in one call, and cuts the file off there.
Error CRsdFile::WriteTail(std::size_t treeSize) {
    std::vector<std::uint8_t> block;
    block.reserve(treeSize + CRsdTrailer::size);
    block.insert(block.end(), tree.begin(), tree.begin() + static_cast<std::ptrdiff_t>(treeSize));
    block.insert(block.end(), trailer->bytes.begin(), trailer->bytes.end());
    if (const Error error = file.Write(std::as_bytes(std::span(block)))) return error;
    std::int64_t position = 0;
    if (const Error error = file.Tell(position)) return error;
    return file.Truncate(position);
}

Error CRsdFile::Store() {
    std::uint32_t scansXor = 0;
    if (scansDirty) {
        if (const Error error = StoreScans(scansXor)) return error;
    } else if (infoDirty) {
        if (const Error error = SeekToTree(scansXor)) return error;
    }
    if (infoDirty) {
        if (const Error error = StoreInfo(scansXor)) return error;
    }
    return file.Flush();
}

Error CRsdFile::Commit() {
    if (readOnly) return isReadOnly;
    if (const Error error = Store()) {
        // The trailer in memory may differ from the file now, so another try must read it again.
        trailer.reset();
        return error;
    }
    scansDirty = infoDirty = false;
    return success;
}

Error CRsdFile::Close() {
    if (!file.IsOpen()) return success;
    const Error committed = readOnly ? success : Commit();
    const Error closed = file.Close();
    if (committed) return committed;
    if (closed) return closed;
    readOnly = false;
    tree.clear();
    trailer.reset();
    return success;
}

void CRsdFile::CloseQuietly() noexcept try { std::ignore = Close(); } catch (const std::bad_alloc&) {
    file.CloseQuietly();
}
