#include "tools/snapshot_command.h"

namespace zorl2_inspect {

void AddSnapshotCommand(CLI::App&, int&) {}

}  // namespace zorl2_inspect
