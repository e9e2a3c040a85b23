#include "tools/roundtrip_command.h"

namespace zorl2_inspect {

void AddRoundtripCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
