// SPDX-License-Identifier: MIT
// The program's numbered messages.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

enum class MessageId {
    SyntaxError = 1,            // settings file, section
    DiskSpace = 2,              //
    PathDoesNotExist = 3,       // folder
    CannotLocate = 4,           // file
    CannotLoad = 5,             // library file
    BaseCallFailed = 6,         // sample, library
    NotListed = 7,              // name, settings file
    CannotReadRegistry = 8,     // key
    LibraryNeeded = 9,          //
    BaseCallSucceeded = 10,     // sample and processed file, library
    NoBaseOrder = 11,           // sample
    Loading = 12,               // sample, plate, local time
    CannotOpenInput = 13,       // path
    Skipped = 14,               // path or reason
    AlreadyExists = 15,         // processed file
    CannotOpenForWriting = 19,  // path
    AbdFailed = 20,             //
    AbdExported = 21,           //
    FastaExported = 22,         //
    WriteFailed = 23,           // path
    UsingBaseOrder = 24,        // four letters
    ScfExported,                // path; the only text without a documented number
};

// The text of a message with each "%s" replaced by the next argument, or by nothing when there are no more. Arguments
// are inserted unchanged: a "%s" in one is not replaced.
std::string FormatMessage(MessageId id, std::initializer_list<std::string_view> arguments = {});
