#include "run/Plate.h"

#include "discovery/SplitPath.h"
#include "records/PlateRecords.h"
#include "run/RunDriver.h"

CPlate::CPlate(const std::string& folder, const std::vector<CFileTypeFilter>& fileTypes, CRunDriver* owner)
    : scan(folder, fileTypes, false),
      driver(owner),
      name(LastComponent(folder)),
      records(std::make_unique<CPlateRecords>()) {}

CPlate::CPlate(const std::string& folder, CRunDriver* owner)
    : scan(folder), driver(owner), name(LastComponent(folder)) {}

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
