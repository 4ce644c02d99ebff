// SPDX-License-Identifier: MIT
// Reads and writes sample files, which consist of the scans, the property tree and the trailer. docs/sample-file.md
// describes the format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/Error.h"
#include "platform/Files.h"
#include "samplestore/RsdTrailer.h"
#include "samplestore/SampleInfo.h"
#include "samplestore/ScanRecord.h"

// One open sample file. Changes are kept in memory until Commit, which rewrites the file in place; a write that fails
// halfway leaves it damaged, so work on a copy.
//
// Errors are those of the host, or one of these.
class CRsdFile {
  public:
    using Error = platform::Error;
    static constexpr Error notStored{-1};    // Open while a file is open; a key that does not fit in the tree
    static constexpr Error treeTooLarge{1};  // a file with a tree block above 1,000,000 bytes
    static constexpr Error wrongChecksum{-2}, wrongScanCount{-3};  // results of Verify
    static constexpr Error isReadOnly{13};                         // EACCES: a write to a file opened for reading
    static constexpr Error malformed{34};  // ERANGE: short read, bad version, sizes beyond the file

    CRsdFile() = default;
    // Commits and closes. Call Close to get the result.
    ~CRsdFile() { CloseQuietly(); }
    CRsdFile(const CRsdFile&) = delete;
    CRsdFile& operator=(const CRsdFile&) = delete;

    // A sentence that describes `error`.
    static std::string Reason(Error error);

    // Opens an existing file, for reading only or for update.
    Error Open(const std::string& path, bool readOnly);
    bool IsOpen() const { return file.IsOpen(); }

    // Reads the trailer unless it has been read already. `malformed` if the file has no valid one and so is not a
    // sample.
    Error ReadTrailer();
    // True if the file has a valid trailer whose sizes fit each other and the file. ReadTrailer alone may take the end
    // of a text for a trailer, since its bytes may look like a version.
    bool IsSurelySample();
    // Gives the description in the file or, after WriteInfo, the new one.
    Error ReadInfo(CSampleInfo& out);
    // Replaces the description.
    Error WriteInfo(const CSampleInfo& newInfo);

    // Number of whole records in the scan block.
    Error GetScanCount(std::uint32_t& count);
    // Reads the first destination.size() records; `malformed` if there are fewer.
    Error ReadScans(std::span<ScanRecord> destination);
    // Checks the properties that no other operation checks, and that every file stored by the program has: it consists
    // of whole scans, tree and trailer (else malformed), its checksum is right (else wrongChecksum), and its trailer
    // has the number of scans (else wrongScanCount). Reads the whole file from the disk, without uncommitted changes.
    Error Verify();
    // Replaces the scan block.
    Error WriteScans(std::vector<ScanRecord> records);

    // Writes all changes to the file and waits until they are on the disk. After an error they are still pending.
    Error Commit();
    // Commits unless read-only, and closes the file whatever the result. Success if no file is open.
    Error Close();
    // The same without a result, for example after reading.
    void CloseQuietly() noexcept;

  private:
    void Reset();
    Error SeekFromEnd(std::int64_t size);
    Error ReadTree();
    Error XorFile(std::uint32_t& words);
    Error LoadTree(std::uint32_t& checksumPart);
    Error Store();
    Error SeekToTree(std::uint32_t& scansXor);
    Error StoreScans(std::uint32_t& scansXor);
    Error StoreInfo(std::uint32_t scansXor);
    Error WriteTail(std::size_t treeSize);

    platform::File file;
    bool readOnly = false;
    CSampleInfo info;
    bool infoDirty = false;
    std::unique_ptr<CRsdTrailer> trailer;  // null until the first read or store
    std::uint32_t storedTreeSize = 0;      // as the file has it; in `trailer` it is rounded up
    std::vector<std::uint8_t> tree;        // the tree block
    std::vector<ScanRecord> scans;         // the new scan block; the one in the file is only read on demand
    bool scansDirty = false;
};
