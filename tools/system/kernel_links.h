// The network interfaces of this machine as native records.
#pragma once

#include <vector>

#include "native/intf_entry.h"

namespace zorl2_inspect {

// One entry for each interface of this network namespace, ascending by index; docs/snapshot.md
// tells what becomes of what. Throws std::runtime_error when the kernel does not answer.
std::vector<IntfEntry> KernelEntries();

}  // namespace zorl2_inspect
