#include "tools/stats_command.h"

namespace zorl2_inspect {

void AddStatsCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
