#include "records/Messages.h"

namespace {

std::string_view Pattern(MessageId id) {
    switch (id) {
        case MessageId::SyntaxError:
            return "Syntax error in %s in %s section. The program will be terminated \r\n.";
        case MessageId::DiskSpace:
            return "You have not enough disk space (assuming 200K per each processed .abd or .esd file). "
                   "Do you want to continue?";
        case MessageId::PathDoesNotExist:
            return "Specified path doesn't exist: %s\r\n";
        case MessageId::CannotLocate:
            return "Cannot locate  %s  file \r\n";
        case MessageId::CannotLoad:
            return "Cannot load %s \r\n";
        case MessageId::BaseCallFailed:
            return "failed to basecall  %s   with  %s\r\n";
        case MessageId::NotListed:
            return "%s  is not listed in %s file \r\n";
        case MessageId::CannotReadRegistry:
            return "Cannot read registry key %s  \r\n";
        case MessageId::LibraryNeeded:
            return "You have to pass basecaller DLL when using switch '-e'  \r\n";
        case MessageId::BaseCallSucceeded:
            return "successfully basecalled %s with %s\r\n";
        case MessageId::NoBaseOrder:
            return "The base order is not specified in the %s.\r\n";
        case MessageId::Loading:
            return "\tLoading %s  %s  %s\r\n";
        case MessageId::CannotOpenInput:
            return "cannot open input file %s\r\n";
        case MessageId::Skipped:
            return "skipped %s\r\n";
        case MessageId::AlreadyExists:
            return "The processed file %s already exists.\r\n";
        case MessageId::CannotOpenForWriting:
            return "cannot open file %s for writing \r\n";
        case MessageId::AbdFailed:
            return "failed to export to ABD file format \r\n";
        case MessageId::AbdExported:
            return "exported to ABD file format \r\n";
        case MessageId::FastaExported:
            return "exported to FASTA file format \r\n";
        case MessageId::WriteFailed:
            return "failed to write file %s \r\n";
        case MessageId::UsingBaseOrder:
            return "Using base order %s. \r\n";
        case MessageId::ScfExported:
            return "exported to SCF file format %s\r\n";
    }
    return {};
}

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
