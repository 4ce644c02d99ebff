// SPDX-License-Identifier: MIT
// The state of a plate's two logs, kept from one entry to the next.
#pragma once

#include <memory>

#include "platform/Files.h"
#include "records/HtmlFile.h"

struct CPlateRecords {
    platform::FileIdentity log{};       // the basecall.log that has been checked not to be a sample
    std::unique_ptr<CHtmlFile> markup;  // log.xml as last written; null when it must be read again
    bool hasWarnedOfLog = false;        // of a lost entry
    bool hasWarnedOfMarkup = false;
};
