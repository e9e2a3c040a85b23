#include "tools/explain_command.h"

namespace zorl2_inspect {

void AddExplainCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
