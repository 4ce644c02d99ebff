// SPDX-License-Identifier: MIT
// Changes a sample file's description, for tests of what other programs make of it:
// describe-sample FILE [FIELD TEXT]... with the fields name, plate, well, comment, size (as in 24x16) and signal (of
// channel 1; it grows by 1 per channel, and a tenth of it is noise).
#include <cstdio>
#include <string>
#include <string_view>

#include "samplestore/NewSample.h"
#include "samplestore/RsdFile.h"

namespace {

void SetSignal(CAnalysisInfo& analysis, int signal) {
    analysis.snZoneCount = 1;
    analysis.snZoneStarts = analysis.snZoneEnds = {1};
    for (int k = 0; k < channelCount; ++k) {
        analysis.snSignal[k] = {signal + k};
        analysis.snNoise[k] = {(signal + k) / 10};
    }
}

// False for a field that is not known.
bool Set(CSampleInfo& info, std::string_view field, const std::string& text) {
    if (field == "name")
        info.sampleName = text;
    else if (field == "plate")
        info.plateId = text;
    else if (field == "well")
        info.wellId = text;
    else if (field == "comment")
        info.comment = text;
    else if (field == "signal")
        SetSignal(info.analysis, std::stoi(text));
    else
        return field == "size" && std::sscanf(text.c_str(), "%dx%d", &info.plateColumns, &info.plateRows) == 2;
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    {
        CRsdFile file;
        std::uint32_t count = 0;
        if (file.Open(argv[1], true) || file.ReadInfo(info) || file.GetScanCount(count)) return 1;
        scans.resize(count);
        if (file.ReadScans(scans)) return 1;
    }
    for (int i = 2; i + 1 < argc; i += 2)
        if (!Set(info, argv[i], argv[i + 1])) return 2;
    return WriteSample(argv[1], info, scans) ? 1 : 0;
}
