#include "plugins/BaseCaller.h"

#include <lanewright/basecaller.h>
#include <tuple>
#include <utility>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "plugins/EntryPoint.h"

std::int32_t CBaseCaller::Load() {
    // A drive is resolved before the working folder moves, because the registry store may be named relative to it.
    const auto path = platform::NativePath(folder + '\\' + fileName);
    // A library may read files of its own that lie beside it.
    const auto workingFolder = platform::CurrentFolder();
    std::ignore = platform::SetCurrentFolder(folder);
    platform::Library loaded;
    const bool isLoaded = path && loaded.Open(*path);
    if (isLoaded) {
        // Only now is an earlier load let go of, so a library that is loaded already stays so with all its state.
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
    } catch (...) {  // nothing depends on how the library leaves
    }
    module.Close();
}

void CBaseCaller::ReadFolderSuffix() {
    const CEntryPoint<decltype(&::GetBaseCallerCod)> getCode{module, "GetBaseCallerCod", {}};
    const char* code = nullptr;
    try {
        if (getCode) code = getCode();
    } catch (...) {  // a library that breaks off here has no code; its base calls tell what else is wrong with it
    }
    folderSuffix = std::string("_") + (code ? code : "N") + "_QX1";
}
