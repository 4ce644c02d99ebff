#include "samplestore/NewSample.h"

#include "platform/Files.h"
#include "samplestore/RsdFile.h"
#include "samplestore/RsdTrailer.h"
#include "samplestore/XorWords.h"

std::int32_t WriteBareSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans) {
    CRsdTrailer trailer;
    trailer.Encode(info);
    trailer.SetPlateSize(info.plateColumns, info.plateRows);
    trailer.SetChecksum(XorWords(std::as_bytes(scans)) ^ trailer.Share());

    platform::File file;
    std::int32_t error = file.Open(path, platform::OpenMode::CreateOrEmpty);
    if (error == 0) error = file.Write(std::as_bytes(scans));
    if (error == 0) error = file.Write(std::as_bytes(std::span(trailer.bytes)));
    const std::int32_t closed = file.Close();
    return error != 0 ? error : closed;
}

std::int32_t WriteSample(const std::string& path, const CSampleInfo& info, std::span<const ScanRecord> scans) {
    std::int32_t error = WriteBareSample(path, info, {});
    CRsdFile file;
    if (error == 0) error = file.Open(path, false);
    if (error == 0) error = file.WriteInfo(info);
    // With scans in the same store the checksum is made from all that is written.
    if (error == 0) error = file.WriteScans({scans.begin(), scans.end()});
    return error == 0 ? file.Close() : error;
}
