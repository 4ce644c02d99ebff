// SPDX-License-Identifier: MIT
#include "plugins/BaseCaller.h"

#include <lanewright/basecaller.h>
#include <tuple>
#include <utility>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "plugins/EntryPoint.h"

std::int32_t CBaseCaller::Load() {
    // The path is resolved before the working folder changes, because the path of the registry store may be relative to
    // it.
    const auto path = platform::NativePath(folder + '\\' + fileName);
    // A library may read files of its own in its folder.
    const auto workingFolder = platform::CurrentFolder();
    std::ignore = platform::SetCurrentFolder(folder);
    platform::Library loaded;
    const bool isLoaded = path && loaded.Open(*path);
    if (isLoaded) {
        // An earlier load is released only now, so a library that is loaded already stays loaded and keeps its state.
        module = std::move(loaded);
        ReadFolderSuffix();
    }
    if (workingFolder) std::ignore = platform::SetCurrentFolder(*workingFolder);
    return isLoaded ? 1 : 0;
}

void CBaseCaller::Unload() {
    if (!module.IsOpen()) return;
    try {
        if (const CEntryPoint<decltype(&::CleanUp)> cleanUp{module, "CleanUp", {}}) cleanUp();
    } catch (...) {  // nothing depends on how the clean-up ends
    }
    module.Close();
}

void CBaseCaller::ReadFolderSuffix() {
    const CEntryPoint<decltype(&::GetBaseCallerCod)> getCode{module, "GetBaseCallerCod", {}};
    const char* code = nullptr;
    try {
        if (getCode) code = getCode();
    } catch (...) {  // a library that throws here has no code; its base calls will report what else is wrong
    }
    folderSuffix = std::string("_") + (code ? code : "N") + "_QX1";
}
