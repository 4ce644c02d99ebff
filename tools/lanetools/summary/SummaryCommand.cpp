#include "lanetools/Subcommand.h"

namespace lanetools {

CSubcommand AddSummary(CLI::App& tools) {
    CLI::App* app = tools.add_subcommand("summary", "");
    return {app, [] { return ExitCode::Failed; }};
}

}  // namespace lanetools
