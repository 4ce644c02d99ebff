// SPDX-License-Identifier: MIT
#include "run/Plate.h"

#include <utility>

#include "config/RunSettings.h"
#include "discovery/SplitPath.h"
#include "records/PlateRecords.h"
#include "run/InputSamples.h"
#include "run/RunDriver.h"

namespace {

// Single files in one folder, and repeated passes over one plate, share the state of its logs.
std::shared_ptr<CPlateRecords> RecordsOf(const std::string& folder, CRunDriver* driver) {
    if (!driver) return std::make_shared<CPlateRecords>();
    std::shared_ptr<CPlateRecords>& records = driver->records[folder];
    if (!records) records = std::make_shared<CPlateRecords>();
    // Memory holds only one log.xml.
    const auto former = std::exchange(driver->latestRecords, records);
    if (former && former != records) former->markup.reset();
    return records;
}

}  // namespace

CPlate::CPlate(const std::string& folder, const std::vector<CFileTypeFilter>& fileTypes, CRunDriver* owner)
    : scan(folder, fileTypes, false), driver(owner), name(LastComponent(folder)), records(RecordsOf(folder, owner)) {}

CPlate::CPlate(const std::string& folder, CRunDriver* owner)
    : scan(folder), driver(owner), name(LastComponent(folder)), records(RecordsOf(folder, owner)) {}

CPlate::~CPlate() = default;

const CRunSettings& CPlate::Settings() const {
    return *driver->baseCallers;
}

const CInputSamples& CPlate::InputSamples() const {
    static const CInputSamples none;
    return driver ? driver->inputSamples : none;
}

std::int32_t CPlate::LoadSample(const std::string& path) {
    return driver->OpenSample(path, currentSample, *this);
}
