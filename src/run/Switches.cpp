// SPDX-License-Identifier: MIT
#include "run/Switches.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "config/RunSettings.h"
#include "platform/Files.h"
#include "plugins/BaseCallerSet.h"
#include "run/CommandLine.h"
#include "run/RunDriver.h"
#include "samplestore/SampleFile.h"

namespace {

// An empty first word counts as no parameter.
bool HasParameter(const CParsedSwitch& given) {
    return !given.parameters.empty() && !given.parameters.front().empty();
}

template <std::int32_t CRunSettings::*flag, std::int32_t value>
void Set(const CParsedSwitch&, CRunDriver& driver, RunRequest&) {
    (*driver.baseCallers).*flag = value;
}

void SetOutput(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request) {
    if (!HasParameter(given)) return;
    request.result = driver.SetOutputFolder(given.parameters.front());
    request.needDefaultOutput = false;
}

void AddCallers(const CParsedSwitch& given, CRunDriver&, RunRequest& request) {
    if (!HasParameter(given)) return;
    request.callerNames.insert(request.callerNames.end(), given.parameters.begin(), given.parameters.end());
}

void ForceBaseOrder(const CParsedSwitch& given, CRunDriver& driver, RunRequest&) {
    constexpr std::size_t orderLength = 4;
    if (HasParameter(given) && given.parameters.front().size() == orderLength)
        driver.baseCallers->SetBaseOrder(given.parameters.front());
    driver.baseCallers->baseOrderForced = 1;
}

void SetFastaFile(const CParsedSwitch& given, CRunDriver& driver, RunRequest&) {
    if (HasParameter(given)) driver.baseCallers->SetFastaFile(given.parameters.front());
}

void BeginFastaFile(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request) {
    if (HasParameter(given) && !driver.inputSamples.IsWriteForbidden(given.parameters.front()))
        platform::DeleteIfThere(given.parameters.front());
    SetFastaFile(given, driver, request);
}

void Help(const CParsedSwitch&, CRunDriver&, RunRequest&) {
    ShowHelp();
}

using StepResult = std::optional<std::int32_t>;

// -FA and -FA_.
StepResult ExportFasta(const SampleStep& step) {
    if (step.called || step.set.skipFailedExports == 0)
        step.sample.ExportFasta(step.called, step.set.fastaFile, step.set.goodRegionOnly);
    return std::nullopt;
}

// --- The table: id, name, whether it needs a base call, help, what it sets, its operation on a sample

constexpr CSwitch table[] = {
    {Switch::InputFolders, "-ID", false, "", nullptr, nullptr},
    {Switch::InputPlates, "-IP", false, "", nullptr, nullptr},
    {Switch::InputFiles, "-IF", false, "", nullptr, nullptr},
    {Switch::OutputFolder, "-OD", false,
     "-OD: (optional) supplies output directory name. In case if this switch is not passed, basecaller reads and  "
     "uses default folder from the registry database.\r\n",
     SetOutput, nullptr},
    {Switch::BaseCall, "-BC", true,
     "-BC:  turns on basecalling and supplies (OPTIONAL) basecalling DLL. Note: user can supply several dll's (for "
     "example, [-bc vhtk.dll Kelp153_beautify.dll]) - in this case all the operations including export to different "
     "formats will be done for all the passed basecallers.\r\n",
     AddCallers, nullptr},
    {Switch::Abd, "-ABD", true, "-ABD:  turns on ABD files export.\r\n", nullptr,
     [](const SampleStep& s) -> StepResult {
         return s.called ? s.sample.ExportAbd(*s.called, s.set.goodRegionOnly)
                         : s.sample.ExportFailedAbd(s.set.skipFailedExports);
     }},
    {Switch::Unattended, "-E", false, "-E: OPL Reserved.\r\n", nullptr, nullptr},
    {Switch::Scf, "-SCF", true, "-SCF: turns on SCF files export.\r\n", nullptr,
     [](const SampleStep& s) -> StepResult {
         return s.called ? s.sample.ExportScf(*s.called) : s.sample.ExportFailedScf();
     }},
    {Switch::BaseOrder, "-BO", false, "-BO:  supplies default base order (ACTG), which will override the original.\r\n",
     ForceBaseOrder, nullptr},
    {Switch::Fasta, "-FA", false,
     "-FA: [file name + path]  - exports sequences to FASTA format. File name is optional (if not passed, each sample "
     "will be exported into the separate 'samplename.seq' files).If the file exists, it will be overwritten.\r\n",
     BeginFastaFile, ExportFasta},
    {Switch::FastaAppended, "-FA_", false,
     "-FA_: [file name + path] does the same, but the output is appended to the existing file.\r\n", SetFastaFile,
     ExportFasta},
    {Switch::RawText, "-RAW_TXT", false, "-RAW_TXT:  exports raw files to ASCII format.\r\n", nullptr,
     [](const SampleStep& s) -> StepResult { return s.sample.ExportText(*s.sample.rawTrace); }},
    {Switch::ProcessedText, "-PROC_TXT", true, "-PROC_TXT: exports processed files to ASCII format.\r\n", nullptr,
     [](const SampleStep& s) -> StepResult { return s.called ? s.sample.ExportText(*s.called) : 0; }},
    {Switch::PlateFasta, "-FAP", true, "-FAP OPL Reserved.\r\n", nullptr,
     [](const SampleStep& s) -> StepResult {
         const std::string file = s.set.PlateFastaFile(*s.sample.plate);
         if (file.empty()) return std::nullopt;
         return s.sample.ExportFasta(s.called, file, s.set.goodRegionOnly);
     }},
    {Switch::RunFasta, "-FAG", true, "-FAG OPL Reserved.\r\n", nullptr,
     [](const SampleStep& s) -> StepResult {
         return s.sample.ExportFasta(s.called, s.set.RunFastaFile(), s.set.goodRegionOnly);
     }},
    {Switch::GoodRegion, "-GOOD_SEQ", false,
     "-GOOD_SEQ: allows to export only the 'good region' of the trace to the different file formats.\r\n",
     Set<&CRunSettings::goodRegionOnly, 1>, nullptr},
    {Switch::NoExtensions, "-USER_EXT", false,
     "-USER_EXT: allows not to attach  .abd or .scf extentions to the exported file names.\r\n",
     Set<&CRunSettings::noExtensions, 1>, nullptr},
    {Switch::NoEmpty, "-NOEMPTY", false,
     "-NOEMPTY:  excludes failed samples from exporting to different file formats.\r\n",
     Set<&CRunSettings::skipFailedExports, 1>, nullptr},
    {Switch::Pile, "-PILE", false, "-PILE: turns off exporting to the subfolders.\r\n",
     Set<&CRunSettings::exportToSubfolders, 0>, nullptr},
    {Switch::Help, "-H", false, "-H: turns on help output.\r\n", Help, nullptr},
};

constexpr std::size_t inputSwitches = 3;

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < std::size(table); ++i)
        if (table[i].id != static_cast<Switch>(i)) return false;
    return true;
}
static_assert(IsInOrder(), "one row for each switch, in the order of Switch");

std::vector<std::string> NamesOf(std::span<const CSwitch> rows) {
    std::vector<std::string> names;
    for (const CSwitch& row : rows)
        names.emplace_back(row.name);
    return names;
}

}  // namespace

std::span<const CSwitch> AllSwitches() {
    return table;
}

const CSwitch* FindSwitch(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(table), std::end(table), [&](const CSwitch& row) { return row.name == name; });
    return found == std::end(table) ? nullptr : found;
}

bool IsSwitch(std::string_view name, Switch id) {
    return table[static_cast<std::size_t>(id)].name == name;
}

std::vector<std::string> InputSwitchNames() {
    return NamesOf(AllSwitches().first(inputSwitches));
}

std::vector<std::string> SwitchNames() {
    return NamesOf(AllSwitches().subspan(inputSwitches));
}

void ApplySwitch(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request) {
    const CSwitch* const row = FindSwitch(given.name);
    if (!row) return;
    // The base call runs once, before the first operation that needs it.
    if (row->needsBaseCall && !std::exchange(request.callerSwitchAdded, true))
        driver.baseCallers->AddSwitch(table[static_cast<std::size_t>(Switch::BaseCall)].name);
    if (row->step) driver.baseCallers->AddSwitch(row->name);
    if (row->apply) row->apply(given, driver, request);
}
