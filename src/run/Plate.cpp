#include "run/Plate.h"

#include "discovery/SplitPath.h"
#include "run/RunDriver.h"

CPlate::CPlate(const std::string& folder, const std::vector<CFileTypeFilter>& fileTypes, CRunDriver* owner)
    : scan(folder, fileTypes, false), driver(owner), name(LastComponent(folder)) {}

CPlate::CPlate(const std::string& folder, CRunDriver* owner)
    : scan(folder), driver(owner), name(LastComponent(folder)) {}

CPlate::~CPlate() = default;

const CRunSettings& CPlate::Settings() const {
    return *driver->baseCallers;
}

std::int32_t CPlate::LoadSample(const std::string& path) {
    return driver->OpenSample(path, currentSample, *this);
}
