#include "lanetools/Subcommand.h"

namespace lanetools {

CSubcommand AddExport(CLI::App& tools) {
    CLI::App* app = tools.add_subcommand("export", "");
    return {app, [] { return ExitCode::Failed; }};
}

}  // namespace lanetools
