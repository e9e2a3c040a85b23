#include "tools/show_command.h"

namespace zorl2_inspect {

void AddShowCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
