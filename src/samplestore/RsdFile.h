// Reading and writing of sample files: the scans, the property tree and the trailer as one container. The format is
// told in docs/sample-file.md.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "samplestore/RsdTrailer.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

// One sample file at a time. Changes live in memory until Commit, which rewrites the file in place; a write that fails
// part way leaves it damaged, so work on a copy.
//
// Errors: those of the host, or one of these.
class CRsdFile {
  public:
    using Error = platform::Error;
    static constexpr Error notStored{-1};    // Open on an open object; a key that the tree does not take, or too large
    static constexpr Error treeTooLarge{1};  // a tree block above 1,000,000 bytes in a file
    static constexpr Error isReadOnly{13};   // EACCES: a write on a file opened for reading
    static constexpr Error malformed{34};    // ERANGE: short read, bad version, sizes beyond the file

    CRsdFile() = default;
    // Closes, and so commits; whoever needs the result calls Close.
    ~CRsdFile() { CloseQuietly(); }
    CRsdFile(const CRsdFile&) = delete;
    CRsdFile& operator=(const CRsdFile&) = delete;

    // What is wrong, in words.
    static std::string Reason(Error error);

    // Opens an existing file, for reading only or for update.
    Error Open(const std::string& path, bool readOnly);
    bool IsOpen() const { return file.IsOpen(); }

    // Reads the trailer, if that has not been done yet; malformed for a file without a valid one, which is no sample.
    Error ReadTrailer();
    // The description: as the file has it or, after WriteInfo, as it was given.
    Error ReadInfo(CSampleInfo& out);
    Error WriteInfo(const CSampleInfo& newInfo);

    // Number of whole records in the scan block.
    Error GetScanCount(std::uint32_t& count);
    // The first destination.size() records; malformed if the block has fewer.
    Error ReadScans(std::span<ScanRecord> destination);
    // Replaces the scan block.
    Error WriteScans(std::vector<ScanRecord> records);

    // Brings the file up to date and has the system put it on the disk. What failed to be stored stays pending.
    Error Commit();
    // Commits unless read-only, and closes the file whatever the result. No error when nothing is open.
    Error Close();
    // The same when nothing depends on the result, as after reading.
    void CloseQuietly() noexcept;

  private:
    void Reset();
    Error SeekFromEnd(std::int64_t size);
    Error ReadTree();
    Error LoadTree(std::uint32_t& share);
    Error Store();
    Error SeekToTree(std::uint32_t& scansXor);
    Error StoreScans(std::uint32_t& scansXor);
    Error StoreInfo(std::uint32_t scansXor);
    Error WriteTail(std::size_t treeSize);

    platform::File file;
    bool readOnly = false;
    CSampleInfo info;
    bool infoDirty = false;
    std::unique_ptr<CRsdTrailer> trailer;  // from the first read or store on
    std::vector<std::uint8_t> tree;        // the tree block; its size is the limit for the property tree
    std::vector<ScanRecord> scans;         // a new scan block; the present one is read where it is wanted
    bool scansDirty = false;
};
