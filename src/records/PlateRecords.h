// What a plate keeps about its two logs from one entry to the next.
#pragma once

#include <memory>
#include <string>

#include "platform/Files.h"
#include "records/HtmlFile.h"

struct CPlateRecords {
    std::string folder;                 // of the plate
    platform::FileIdentity log{};       // the basecall.log that is known to be no sample
    std::unique_ptr<CHtmlFile> markup;  // log.xml as it was written last; none when it has to be read
    bool isLogLost = false;             // the user has been warned that one of them cannot be written
    bool isMarkupLost = false;
};
