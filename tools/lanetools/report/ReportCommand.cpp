// SPDX-License-Identifier: MIT
// lanetools report: one HTML page per plate.
#include <filesystem>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "lanetools/CommonOptions.h"
#include "lanetools/ExitCode.h"
#include "lanetools/Subcommand.h"
#include "lanetools/report/PlatePage.h"
#include "lanetools/samples/Inputs.h"
#include "lanetools/samples/Summarize.h"
#include "lanetools/samples/Target.h"
#include "lanetools/samples/Unread.h"
#include "lanetools/system/ToDisk.h"
#include "lanetools/text/SafeName.h"
#include "lanetools/text/StandardOutput.h"
#include "platform/AtomicFile.h"

namespace lanetools {

namespace {

namespace fs = std::filesystem;

constexpr const char* about =
    "Makes an HTML page of a plate: all wells at a glance, and every trace on a click. The\n"
    "page is one file that needs no network.";

constexpr const char* notes =
    "OUT are output roots of the program, or plate folders in them. With several plates, -o is\n"
    "a folder, which gets a page per plate and is made when it is missing.\n"
    "\n"
    "The raw curves of a sample, and wells that have no result, are known from --raw. Raw\n"
    "curves make the file larger by about a third; --no-raw leaves them out.\n"
    "\n"
    "Exit codes: 0 done, 1 it could not be done, 2 refused before anything was written,\n"
    "3 done, but something could not be read and is named, 130 after Ctrl-C.\n"
    "\n"
    "Example:\n"
    "  lanetools report out --raw plate1 -o plate1.html";

struct CReportOptions {
    std::vector<std::string> outputs, raw;
    std::string target;
    bool withoutRaw = false;
};

void WritePage(const std::string& path, const std::string& page) {
    platform::AtomicFile file;
    if (const auto error = file.Open(path)) throw std::runtime_error(path + ": " + error.Text());
    file.Write(page);
    CommitToDisk(file, path);
    WriteStandardOutput(path + "\n");
}

// "plate1_LC1_QX1.html"; two folders of one name (from different roots) get different names.
std::string PageName(const std::string& folder, std::set<std::string>& used) {
    const std::string name = SafeName(folder);
    std::string unique = name;
    for (int number = 2; !used.insert(unique).second; ++number)
        unique = name + "_" + std::to_string(number);
    return unique + ".html";
}

bool IsFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

// The path of the file or folder to write. Refuses one that cannot be written before any time is spent.
std::string CheckTarget(const std::string& path) {
    if (IsFolder(path)) return path;
    try {
        const std::string target = ResolveTarget(path);
        platform::AtomicFile file;
        if (const auto error = file.Open(target)) throw CRefused(target + ": " + error.Text());
        return target;
    } catch (const CRefused&) {
        if (IsFolder(path)) return path;  // another report has just made it
        throw;
    }
}

// The rows' own and those of the folders, which may belong to any page.
ExitCode WritePages(const std::string& target, const CReportOptions& options, const std::vector<CPlateRows>& plates,
                    const Unread& ofFolders) {
    const bool isFolder = IsFolder(target);
    if (plates.size() > 1 && !isFolder) {
        std::error_code error;
        if (fs::exists(target, error)) throw CRefused(target + ": several plates need a folder, and this is a file");
        MakeFolderOnDisk(target, error);
        if (error) throw CRefused(target + ": several plates need a folder: " + error.message());
    }
    Unread unread = ofFolders;
    std::set<std::string> used;
    for (const CPlateRows& plate : plates) {
        Unread ofPlate = ofFolders;
        const std::string page = PlatePage(plate, !options.withoutRaw, ofPlate);
        const bool isOne = plates.size() == 1 && !isFolder;
        WritePage(isOne ? target : (fs::path(target) / PageName(plate.folder, used)).string(), page);
        unread.insert(unread.end(), ofPlate.begin(), ofPlate.end());
    }
    ShowUnread(unread);
    return unread.empty() ? ExitCode::Done : ExitCode::Incomplete;
}

ExitCode Report(const CReportOptions& options) {
    const CInputs inputs = FindInputs(options.outputs, options.raw);
    const std::string target = CheckTarget(options.target);
    const auto plates = GroupByPlate(Summarize(inputs.outputs, inputs.plates));
    if (!plates.empty()) return WritePages(target, options, plates, inputs.unread);
    ShowUnread(inputs.unread);
    throw CRefused(options.outputs.front() + ": there is no sample in it");
}
}  // namespace

CSubcommand AddReport(CLI::App& tools) {
    const auto options = std::make_shared<CReportOptions>();
    CLI::App* app = tools.add_subcommand("report", about);
    app->footer(notes);
    app->add_option("OUT", options->outputs, "Folders with results")->required()->check(PlainPath())->type_name("OUT");
    app->add_option("-o,--output", options->target, "The page, or the folder of the pages")
        ->required()
        ->check(PlainPath())
        ->type_name("PATH");
    app->add_option("--raw", options->raw, "Folders of raw plates")->check(PlainPath())->type_name("PLATE");
    app->add_flag("--no-raw", options->withoutRaw, "Leaves the raw curves out");
    return {app, [options] { return Report(*options); }};
}

}  // namespace lanetools
