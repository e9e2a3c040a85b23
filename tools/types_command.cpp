#include "tools/types_command.h"

namespace zorl2_inspect {

void AddTypesCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
