#include "lanetools/Subcommand.h"

namespace lanetools {

CSubcommand AddRun(CLI::App& tools) {
    CLI::App* app = tools.add_subcommand("run", "");
    return {app, [] { return ExitCode::Failed; }};
}

}  // namespace lanetools
