#include "samplestore/RsdFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#include "samplestore/PropertyKeys.h"
#include "samplestore/PropertyTree.h"
#include "samplestore/XorWords.h"

namespace {

constexpr std::int32_t success = 0;
constexpr std::uint32_t largestTree = 1000000;
constexpr std::size_t newTreeSize = 2048;

std::uint32_t RoundUp4(std::uint32_t size) {
    constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max() - 3;
    return size >= largest ? largest : (size + 3) / 4 * 4;
}

// Fills `out` from the present position; a file that ends before is malformed.
std::int32_t ReadAll(platform::File& file, std::span<std::byte> out) {
    std::size_t got = 0;
    const std::int32_t error = file.Read(out, got);
    if (error != success) return error;
    return got == out.size() ? success : CRsdFile::malformed;
}

}  // namespace

CRsdFile::~CRsdFile() {
    Close();
}

void CRsdFile::Reset() {
    readOnly = infoDirty = scansDirty = false;
    info = {};
    trailer.reset();
    tree.clear();
    scans.clear();
}

std::int32_t CRsdFile::Open(const std::string& path, bool forReading) {
    if (file.IsOpen()) return notStored;
    const std::int32_t error = file.Open(path, forReading ? platform::OpenMode::Read : platform::OpenMode::Update);
    if (error != success) return error;
    Reset();
    readOnly = forReading;
    return success;
}

std::int32_t CRsdFile::ReadTrailer() {
    if (trailer) return success;
    std::int32_t error = file.SeekFromEnd(-static_cast<std::int64_t>(CRsdTrailer::size));
    if (error != success) return error;
    auto image = std::make_unique<CRsdTrailer>();
    error = ReadAll(file, std::as_writable_bytes(std::span(image->bytes)));
    if (error != success) return error;
    if (!image->IsVersionValid()) return malformed;
    image->SetSizes(image->TotalSize(), RoundUp4(image->TreeSize()));
    trailer = std::move(image);
    return success;
}

// Reads the tree block that the trailer tells of. A block that does not lie inside the file is malformed, and is found
// so before there is any room made for it.
std::int32_t CRsdFile::ReadTree() {
    if (trailer->TreeSize() > trailer->TotalSize()) return malformed;
    const std::int32_t error = file.SeekFromEnd(-static_cast<std::int64_t>(trailer->TotalSize()));
    if (error != success) return error == EINVAL ? malformed : error;
    tree.resize(trailer->TreeSize());
    return ReadAll(file, std::as_writable_bytes(std::span(tree)));
}

std::int32_t CRsdFile::ReadInfo(CSampleInfo& out) {
    if (!infoDirty) {
        std::int32_t error = ReadTrailer();
        if (error != success) return error;
        trailer->Decode(info);
        if (trailer->TreeSize() > largestTree) return treeTooLarge;
        if (trailer->TreeSize() != 0) {
            error = ReadTree();
            if (error != success) return error;
            ReadKeys(tree, info);
        }
    }
    out = info;
    return success;
}

std::int32_t CRsdFile::WriteInfo(const CSampleInfo& newInfo) {
    if (readOnly) return isReadOnly;
    info = newInfo;
    infoDirty = true;
    return success;
}

std::int32_t CRsdFile::GetScanCount(std::uint32_t& count) {
    std::uint64_t records = scans.size();
    if (!scansDirty) {
        std::int32_t error = ReadTrailer();
        if (error != success) return error;
        std::int64_t length = 0;
        error = file.Length(length);
        if (error != success) return error;
        length -= trailer->TotalSize() != 0 ? trailer->TotalSize() : CRsdTrailer::size;
        if (length < 0) return malformed;
        records = static_cast<std::uint64_t>(length) / scanRecordSize;
    }
    if (records > std::numeric_limits<std::uint32_t>::max()) return malformed;
    count = static_cast<std::uint32_t>(records);
    return success;
}

std::int32_t CRsdFile::ReadScans(std::span<ScanRecord> destination) {
    if (scansDirty) {
        if (destination.size() > scans.size()) return malformed;
        std::copy_n(scans.begin(), destination.size(), destination.begin());
        return success;
    }
    std::uint32_t count = 0;
    std::int32_t error = GetScanCount(count);
    if (error != success) return error;
    if (destination.size() > count) return malformed;
    if (destination.empty()) return success;
    error = file.SeekSet(0);
    if (error != success) return error;
    return ReadAll(file, std::as_writable_bytes(destination));
}

std::int32_t CRsdFile::WriteScans(std::vector<ScanRecord> records) {
    if (readOnly) return isReadOnly;
    scans = std::move(records);
    scansDirty = true;
    return success;
}

// Gives the checksum's share of tree and trailer as the file has them, and the tree in memory. Without a tree block the
// share is 0 and `tree` stays as it is.
std::int32_t CRsdFile::LoadTree(std::uint32_t& share) {
    share = 0;
    std::int32_t error = ReadTrailer();
    if (error != success || trailer->TotalSize() == 0 || trailer->TreeSize() == 0) return error;
    error = ReadTree();
    if (error != success) return error;
    share = XorWords(std::as_bytes(std::span(tree))) ^ trailer->Share();
    return success;
}

// Takes the scan block's share of the checksum from the stored one, so the scans need not be read, and goes to where
// the next write replaces tree and trailer.
std::int32_t CRsdFile::SeekToTree(std::uint32_t& scansXor) {
    std::uint32_t share = 0;
    std::int32_t error = LoadTree(share);
    if (error != success) return error;
    scansXor = trailer->Checksum() ^ share;
    const std::int64_t tailSize = trailer->TotalSize() != 0 ? trailer->TotalSize() : CRsdTrailer::size;
    error = file.SeekFromEnd(-tailSize);
    return error == EINVAL ? malformed : error;
}

// Writes the new scan block; behind it the tree and trailer that are there, unless StoreInfo is to write new ones.
std::int32_t CRsdFile::StoreScans(std::uint32_t& scansXor) {
    std::uint32_t share = 0;
    std::int32_t error = LoadTree(share);
    if (error != success) return error;
    const auto block = std::as_bytes(std::span(scans));
    scansXor = XorWords(block);
    error = file.SeekSet(0);
    if (error == success) error = file.Write(block);
    if (error != success || infoDirty) return error;
    trailer->SetChecksum(scansXor ^ share);
    return WriteTail(tree.size());
}

std::int32_t CRsdFile::StoreInfo(std::uint32_t scansXor) {
    trailer->Encode(info);
    const std::uint8_t* end = CPropertyTree::FindEnd(tree.data(), tree.data() + tree.size());
    if (!end) {
        // No tree yet, or a damaged one that has lost its end.
        tree.assign(newTreeSize, 0);
        tree.front() = property::endMarkerByte;
        end = tree.data();
    }
    auto tail = static_cast<std::size_t>(end - tree.data());
    if (!StoreKeys(tree, tail, info)) return notStored;

    const std::size_t used = tail + 1;
    const std::size_t treeSize = (used + 3) / 4 * 4;
    tree.resize(std::max(tree.size(), treeSize));
    std::fill(tree.begin() + static_cast<std::ptrdiff_t>(used), tree.begin() + static_cast<std::ptrdiff_t>(treeSize),
              std::uint8_t{0});
    const auto size = static_cast<std::uint32_t>(treeSize);
    trailer->SetSizes(size + static_cast<std::uint32_t>(CRsdTrailer::size), size);
    trailer->SetChecksum(trailer->Share() ^ XorWords(std::as_bytes(std::span(tree)).first(treeSize)) ^ scansXor);
    return WriteTail(treeSize);
}

// Writes `treeSize` bytes of the tree and the trailer in one go, and ends the file there.
std::int32_t CRsdFile::WriteTail(std::size_t treeSize) {
    std::vector<std::uint8_t> block;
    block.reserve(treeSize + CRsdTrailer::size);
    block.insert(block.end(), tree.begin(), tree.begin() + static_cast<std::ptrdiff_t>(treeSize));
    block.insert(block.end(), trailer->bytes.begin(), trailer->bytes.end());
    std::int32_t error = file.Write(std::as_bytes(std::span(block)));
    std::int64_t position = 0;
    if (error == success) error = file.Tell(position);
    return error == success ? file.Truncate(position) : error;
}

std::int32_t CRsdFile::Commit() {
    if (readOnly) return isReadOnly;
    std::uint32_t scansXor = 0;
    std::int32_t error = success;
    if (scansDirty)
        error = StoreScans(scansXor);
    else if (infoDirty)
        error = SeekToTree(scansXor);
    if (error == success && infoDirty) error = StoreInfo(scansXor);
    if (error == success) error = file.Flush();
    if (error != success) {
        // The image may be ahead of the file by now; another try goes by what the file says.
        trailer.reset();
        return error;
    }
    scansDirty = infoDirty = false;
    return success;
}

std::int32_t CRsdFile::Close() {
    if (!file.IsOpen()) return success;
    const std::int32_t committed = readOnly ? success : Commit();
    const std::int32_t closed = file.Close();
    if (committed != success) return committed;
    if (closed != success) return closed;
    readOnly = false;
    tree.clear();
    trailer.reset();
    return success;
}
