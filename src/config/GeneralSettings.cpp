// SPDX-License-Identifier: MIT
// Section "General" of the analysis settings.
//
// The program that main starts does not read an analysis settings file, so there these settings keep their defaults.
// They take effect with a CRunDriver made with skipAnalysisIni 0, in a program that uses this code as a library and has
// settings of its own for exports and good regions. The tests are such a program.

#include <array>

#include "config/IniSection.h"
#include "plugins/BaseCallerSet.h"
#include "run/RunDriver.h"

namespace {

enum class Form { Flag, InverseFlag, Number };

struct GeneralKey {
    const char* key;  // case-sensitive, spelt as in the settings files in use
    Form form;
    std::int32_t CRunSettings::*field;
};

constexpr std::array generalKeys = {
    GeneralKey{"EXPORT IF BASE CALLING FAILED", Form::InverseFlag, &CRunSettings::skipFailedExports},
    GeneralKey{"EXPORT GOOD REGION ONLY", Form::Flag, &CRunSettings::goodRegionOnly},
    GeneralKey{"ADD EXTENSIONS TO EXPORTED FILE NAMES", Form::InverseFlag, &CRunSettings::noExtensions},
    GeneralKey{"EXPORT TO SUBFOLDERS", Form::Flag, &CRunSettings::exportToSubfolders},
    GeneralKey{"AllOW USER GOOD REGION", Form::Flag, &CRunSettings::allowUserGoodRegion},
    GeneralKey{"USER QUALITY CUTOFF", Form::Number, &CRunSettings::userQualityCutoff},
    GeneralKey{"AllOWED JUNK %", Form::Number, &CRunSettings::allowedJunkPercent},
    GeneralKey{"QUALITY WINDOW", Form::Number, &CRunSettings::qualityWindow},
    GeneralKey{"ANNOTATION TURNED ON", Form::Flag, &CRunSettings::annotationOn},
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
