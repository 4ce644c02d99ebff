// SPDX-License-Identifier: MIT
// CRunDriver: construction, messages, opening plates and samples, and the check for disk space.
#include "run/RunDriver.h"

#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "records/Messages.h"
#include "run/Plate.h"
#include "run/StartUpLog.h"
#include "samplestore/SampleFile.h"

CRunDriver::CRunDriver(std::int32_t skip) : skipAnalysisIni(skip) {}

CRunDriver::~CRunDriver() = default;

void CRunDriver::Report(const std::string& text) {
    if (unattended != 0)
        startuplog::Append(text);
    else
        platform::ShowBox(text);
    platform::Print(text);
}

void CRunDriver::ReportSyntaxError(const std::string& file, const std::string& section) {
    Report(FormatMessage(MessageId::SyntaxError, {file, section}));
}

void CRunDriver::OpenPlate(const std::string& folder, std::unique_ptr<CPlate>& plate) {
    plate.reset();
    plate = std::make_unique<CPlate>(folder, fileTypes, this);
}

void CRunDriver::Skip(CPlate& plate, const std::string& path, bool isReported) {
    const std::string text = FormatMessage(MessageId::Skipped, {path});
    plate.Log(text);
    if (isReported) Report(text);
}

std::int32_t CRunDriver::OpenSample(const std::string& path, std::unique_ptr<CSampleFile>& sample, CPlate& plate) {
    // The old sample is released first, so that memory never holds two.
    sample.reset();
    sample = std::make_unique<CSampleFile>(path, &plate);
    return sample->Load(path, 0);
}

void CRunDriver::SyncOutput() const {
    if (const platform::Error error = platform::SyncVolume(outputFolder); error && hasOutput)
        platform::Warn({"what was written to ", outputFolder, " may not be on the disk: ", error.Text()});
}

std::int32_t CRunDriver::CheckDiskSpace(std::int32_t units) {
    constexpr std::uint32_t bytesPerUnit = 20000;
    constexpr double reserve = 50000000.0;
    // The product is a 32-bit number, which wraps for very large runs.
    const auto product = static_cast<std::int32_t>(static_cast<std::uint32_t>(units) * bytesPerUnit);
    const auto required = static_cast<std::int64_t>(product + reserve);
    const auto available = platform::FreeBytes(outputFolder);
    if (available && (required <= 0 || *available >= static_cast<std::uint64_t>(required))) return 1;
    return platform::AskYesNo(FormatMessage(MessageId::DiskSpace)) ? 1 : 0;
}
