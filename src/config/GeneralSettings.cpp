// Section "General" of the analysis settings.

#include <array>

#include "config/IniSection.h"
#include "plugins/BaseCallerSet.h"
#include "run/RunDriver.h"

namespace {

enum class Form { Flag, InverseFlag, Number };

struct GeneralKey {
    const char* key;  // compared with case, as the settings files in use have it
    Form form;
    std::int32_t CBaseCallerSet::*field;
};

constexpr std::array generalKeys = {
    GeneralKey{"EXPORT IF BASE CALLING FAILED", Form::InverseFlag, &CBaseCallerSet::skipFailedExports},
    GeneralKey{"EXPORT GOOD REGION ONLY", Form::Flag, &CBaseCallerSet::goodRegionOnly},
    GeneralKey{"ADD EXTENSIONS TO EXPORTED FILE NAMES", Form::InverseFlag, &CBaseCallerSet::noExtensions},
    GeneralKey{"EXPORT TO SUBFOLDERS", Form::Flag, &CBaseCallerSet::exportToSubfolders},
    GeneralKey{"AllOW USER GOOD REGION", Form::Flag, &CBaseCallerSet::allowUserGoodRegion},
    GeneralKey{"USER QUALITY CUTOFF", Form::Number, &CBaseCallerSet::userQualityCutoff},
    GeneralKey{"AllOWED JUNK %", Form::Number, &CBaseCallerSet::allowedJunkPercent},
    GeneralKey{"QUALITY WINDOW", Form::Number, &CBaseCallerSet::qualityWindow},
    GeneralKey{"ANNOTATION TURNED ON", Form::Flag, &CBaseCallerSet::annotationOn},
};

std::int32_t ValueOf(const std::string& text, Form form) {
    switch (form) {
        case Form::Flag:
            return IsIniTrue(text) ? 1 : 0;
        case Form::InverseFlag:
            return IsIniTrue(text) ? 0 : 1;
        case Form::Number:
            break;
    }
    return IniNumber(text);
}

}  // namespace

std::int32_t CBaseCallerSet::ReadGeneralSettings() {
    for (const std::string& line : ReadIniSection("General", driver->analysisIniPath)) {
        const auto entry = SplitIniLine(line);
        if (!entry) continue;
        for (const GeneralKey& known : generalKeys) {
            if (entry->key == known.key) this->*known.field = ValueOf(entry->value, known.form);
        }
    }
    return 1;
}
