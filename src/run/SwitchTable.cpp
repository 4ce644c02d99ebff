#include "run/SwitchTable.h"

#include <array>
#include <string_view>

#include "platform/Console.h"

namespace {

constexpr std::size_t switchCount = 17;

constexpr std::array<std::string_view, switchCount> switchNameTable = {
    "-OD",       "-BC",  "-ABD", "-E",        "-SCF",      "-BO",      "-FA",   "-FA_", "-RAW_TXT",
    "-PROC_TXT", "-FAP", "-FAG", "-GOOD_SEQ", "-USER_EXT", "-NOEMPTY", "-PILE", "-H"};

// In the order of the names.
constexpr std::array<std::string_view, switchCount> helpLines = {
    "-OD: (optional) supplies output directory name. In case if this switch is not passed, basecaller reads and  "
    "uses default folder from the registry database.\r\n",
    "-BC:  turns on basecalling and supplies (OPTIONAL) basecalling DLL. Note: user can supply several dll's (for "
    "example, [-bc vhtk.dll Kelp153_beautify.dll]) - in this case all the operations including export to different "
    "formats will be done for all the passed basecallers.\r\n",
    "-ABD:  turns on ABD files export.\r\n",
    "-E: OPL Reserved.\r\n",
    "-SCF: turns on SCF files export.\r\n",
    "-BO:  supplies default base order (ACTG), which will override the original.\r\n",
    "-FA: [file name + path]  - exports sequences to FASTA format. File name is optional (if not passed, each sample "
    "will be exported into the separate 'samplename.seq' files).If the file exists, it will be overwritten.\r\n",
    "-FA_: [file name + path] does the same, but the output is appended to the existing file.\r\n",
    "-RAW_TXT:  exports raw files to ASCII format.\r\n",
    "-PROC_TXT: exports processed files to ASCII format.\r\n",
    "-FAP OPL Reserved.\r\n",
    "-FAG OPL Reserved.\r\n",
    "-GOOD_SEQ: allows to export only the 'good region' of the trace to the different file formats.\r\n",
    "-USER_EXT: allows not to attach  .abd or .scf extentions to the exported file names.\r\n",
    "-NOEMPTY:  excludes failed samples from exporting to different file formats.\r\n",
    "-PILE: turns off exporting to the subfolders.\r\n",
    "-H: turns on help output.\r\n",
};

constexpr std::string_view helpHead =
    "LANEWRIGHT SWITCHES \r\nAll the switches may be passed in any order.\r\n"
    "-ID: supplies input data directory name (containing multiple plates) incl. the full path\r\n"
    "-IP: input plate directory name including the full path\r\n"
    "-IF: supplies input sample file name including the full path\r\n"
    "All of the switches listed above may be used simultaneously and may be followed whith more then one parameter";

constexpr std::string_view helpExample =
    " For example,\r\n"
    "'-if c:/platex/file1.esd  d:/platey/file2.esd  -ip c:/plate1 c:/plate1plate2 -id e:/myRawData'.\r\n"
    "Both old (.esd) and new (.rsd) sample files are accepted.\r\n\r\n";

}  // namespace

std::vector<std::string> SwitchNames() {
    return {switchNameTable.begin(), switchNameTable.end()};
}

void ShowHelp() {
    platform::Print(helpHead);
    platform::Print(helpExample);
    for (const std::string_view line : helpLines)
        platform::Print(line);
    platform::Print("press any key");
    platform::WaitForKey();
}
