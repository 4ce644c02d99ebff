// SPDX-License-Identifier: MIT
#include "samplestore/NewSample.h"

#include "platform/Files.h"
#include "samplestore/RsdFile.h"
#include "samplestore/RsdTrailer.h"
#include "samplestore/XorWords.h"

using platform::Error;

Error WriteBareSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans) {
    CRsdTrailer trailer;
    trailer.Encode(info);
    trailer.SetPlateSize(info.plateColumns, info.plateRows);
    trailer.SetChecksum(XorWords(std::as_bytes(scans)) ^ trailer.ChecksumPart());

    platform::File file;
    if (const Error error = file.Open(path, platform::OpenMode::CreateOrEmpty)) return error;
    if (const Error error = file.Write(std::as_bytes(scans))) return error;
    if (const Error error = file.Write(std::as_bytes(std::span(trailer.bytes)))) return error;
    return file.Close();
}

Error WriteSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans) {
    if (const Error error = WriteBareSample(path, info, {})) return error;
    CRsdFile file;
    if (const Error error = file.Open(path, false)) return error;
    if (const Error error = file.WriteInfo(info)) return error;
    // Storing scans at the same time makes CRsdFile compute the checksum from all that it writes.
    if (const Error error = file.WriteScans({scans.begin(), scans.end()})) return error;
    return file.Close();
}
