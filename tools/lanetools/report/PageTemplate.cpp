#include "lanetools/report/PlatePage.h"
namespace lanetools {
const std::string_view pageTemplate = "<html><!-- plate --></html>";
}
