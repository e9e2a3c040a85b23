#include "tools/encode_command.h"

namespace zorl2_inspect {

void AddEncodeCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
