// SPDX-License-Identifier: MIT
#include "lanetools/run/Mistakes.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "lanetools/run/ShellQuote.h"
#include "platform/Ascii.h"
#include "samplestore/RsdFile.h"
#include "samplestore/SampleFile.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

std::string Extension(const fs::path& path) {
    return platform::UpperAscii(path.extension().string());
}

bool IsResult(const std::string& path) {
    CRsdFile file;
    CSampleInfo info;
    return !file.Open(path, true) && !file.ReadInfo(info) && info.processed;
}

// Of results all samples are processed ones, and these have the extension .esd.
bool HoldsResults(const CPlannedPlate& plate) {
    const auto isResult = [&](const std::string& file) {
        return Extension(file) == ".ESD" && IsResult(plate.path + '/' + file);
    };
    return !plate.files.empty() && std::all_of(plate.files.begin(), plate.files.end(), isResult);
}

template <class Wanted>
bool HasEntry(const fs::path& folder, Wanted isWanted) {
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        if (isWanted(*at)) return true;
    return false;
}

bool IsRawPlate(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error) && HasEntry(entry.path(), [](const fs::directory_entry& one) {
               return HasSampleExtension(one.path().filename().string());
           });
}

}  // namespace

std::string FindMistake(const CPlannedPlate& plate) {
    if (HoldsResults(plate)) return "it holds results of the program, and a plate is a folder of raw samples";
    if (!plate.files.empty()) return {};
    const auto isOf = [](const char* extension) {
        return [=](const fs::directory_entry& entry) { return Extension(entry.path()) == extension; };
    };
    if (HasEntry(plate.path, isOf(".FSD")))
        return "it holds results of the program, and a plate is a folder of raw samples";
    if (HasEntry(plate.path, isOf(".AB1")) || HasEntry(plate.path, isOf(".ABI")))
        return "it holds files of an instrument (.ab1, .abi): import them first, with " +
               ShellQuoted({"lanetools", "import", plate.given}) + " -o PLATES";
    if (HasEntry(plate.path, IsRawPlate)) return "it holds plates: name its subfolders, as in " + plate.given + "/*";
    return {};
}

}  // namespace lanetools
