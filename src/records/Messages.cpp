// SPDX-License-Identifier: MIT
#include "records/Messages.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace {

constexpr std::pair<MessageId, std::string_view> patterns[] = {
    {MessageId::SyntaxError, "Syntax error in %s in %s section. The program will be terminated \r\n."},
    {MessageId::DiskSpace,
     "You have not enough disk space (assuming 200K per each processed .abd or .esd file). "
     "Do you want to continue?"},
    {MessageId::PathDoesNotExist, "Specified path doesn't exist: %s\r\n"},
    {MessageId::CannotLocate, "Cannot locate  %s  file \r\n"},
    {MessageId::CannotLoad, "Cannot load %s \r\n"},
    {MessageId::BaseCallFailed, "failed to basecall  %s   with  %s\r\n"},
    {MessageId::NotListed, "%s  is not listed in %s file \r\n"},
    {MessageId::CannotReadRegistry, "Cannot read registry key %s  \r\n"},
    {MessageId::LibraryNeeded, "You have to pass basecaller DLL when using switch '-e'  \r\n"},
    {MessageId::BaseCallSucceeded, "successfully basecalled %s with %s\r\n"},
    {MessageId::NoBaseOrder, "The base order is not specified in the %s.\r\n"},
    {MessageId::Loading, "\tLoading %s  %s  %s\r\n"},
    {MessageId::CannotOpenInput, "cannot open input file %s\r\n"},
    {MessageId::Skipped, "skipped %s\r\n"},
    {MessageId::AlreadyExists, "The processed file %s already exists.\r\n"},
    {MessageId::CannotOpenForWriting, "cannot open file %s for writing \r\n"},
    {MessageId::AbdFailed, "failed to export to ABD file format \r\n"},
    {MessageId::AbdExported, "exported to ABD file format \r\n"},
    {MessageId::FastaExported, "exported to FASTA file format \r\n"},
    {MessageId::WriteFailed, "failed to write file %s \r\n"},
    {MessageId::UsingBaseOrder, "Using base order %s. \r\n"},
    {MessageId::ScfExported, "exported to SCF file format %s\r\n"},
};

constexpr std::string_view Pattern(MessageId id) {
    const auto* const found =
        std::find_if(std::begin(patterns), std::end(patterns), [&](const auto& row) { return row.first == id; });
    return found == std::end(patterns) ? std::string_view() : found->second;
}

constexpr bool HasEveryText() {
    for (int id = 1; id <= static_cast<int>(MessageId::ScfExported); ++id) {
        const bool isUsed = id < 16 || id > 18;  // 16 to 18 have no message
        if (isUsed && Pattern(static_cast<MessageId>(id)).empty()) return false;
    }
    return true;
}
static_assert(HasEveryText(), "one row for each MessageId");

}  // namespace

std::string FormatMessage(MessageId id, std::initializer_list<std::string_view> arguments) {
    std::string text;
    std::string_view rest = Pattern(id);
    auto argument = arguments.begin();
    for (std::size_t at = rest.find("%s"); at != std::string_view::npos; at = rest.find("%s")) {
        text += rest.substr(0, at);
        if (argument != arguments.end()) text += *argument++;
        rest.remove_prefix(at + 2);
    }
    return text.append(rest);
}
