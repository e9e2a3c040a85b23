// The network interfaces of this machine as native records.
#pragma once

#include <vector>

#include "native/intf_entry.h"

namespace zorl2_inspect {

// Returns one entry for each interface of this network namespace, ascending by index, as
// docs/snapshot.md describes. Throws std::runtime_error if the kernel does not answer.
std::vector<IntfEntry> KernelEntries();

}  // namespace zorl2_inspect
