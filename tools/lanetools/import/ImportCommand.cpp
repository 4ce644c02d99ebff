#include "lanetools/Subcommand.h"

namespace lanetools {

CSubcommand AddImport(CLI::App& tools) {
    CLI::App* app = tools.add_subcommand("import", "");
    return {app, [] { return ExitCode::Failed; }};
}

}  // namespace lanetools
