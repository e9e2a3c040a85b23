// What one protocol asks of a set of interfaces: to be shut or released, blocked or forwarding.
#pragma once

#include <map>

#include "native/export.h"
#include "native/l2_enums.h"
#include "native/zorid.h"

// The shutdown signal. The map is kept in the ordering of the identifiers and holds at most one
// entry per interface.
struct ZORL2_EXPORT ShutStateInfoSyncSignal {
  // True when the protocol holds the interface shut, false when it releases it.
  std::map<zorid_t, bool> shutStates;
  // The protocol on whose behalf the signal is sent.
  ProtocolType protocol = LLDP;
};

// The blocking signal, kept likewise.
struct ZORL2_EXPORT BlockStateInfoSyncSignal {
  // What the protocol imposes on each interface.
  std::map<zorid_t, BlockState> blockStates;
  // The protocol on whose behalf the signal is sent.
  ProtocolType protocol = LLDP;
};
