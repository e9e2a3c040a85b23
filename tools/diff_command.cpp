#include "tools/diff_command.h"

namespace zorl2_inspect {

void AddDiffCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
