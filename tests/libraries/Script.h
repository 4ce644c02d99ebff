// SPDX-License-Identifier: MIT
// What the scripted library answers, and the calls that it got. A test finds the one in the library as "script".
#pragma once

#include <lanewright/basecaller.h>
#include <string>
#include <vector>

inline std::int32_t sixteen[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

struct Script {
    std::string calls;  // names and arguments in order
    int procedures = 7, failing = -1;
    const char* program = "Scripted";
    std::string problem = "no signal";
    double** curves = nullptr;  // the raw trace when null
    std::int32_t start = 10, end = 60;
    std::vector<BaseRecord> bases;
    std::int32_t count = 0, firstGood = -1, lastGood = 0;
    float** rows = nullptr;
    std::int32_t measured = 2, *zones = sixteen;
    std::vector<float> fwhm{1.5f, 2.5f};
    bool breaksOff = false;  // CleanUp throws
};
