/// \file
/// The states that one protocol requests for a set of interfaces: shut or released, blocked or
/// forwarding.
#pragma once

#include <map>

#include "native/export.h"
#include "native/l2_enums.h"
#include "native/zorid.h"

/// A shutdown signal.
struct ZORL2_EXPORT ShutStateInfoSyncSignal {
  /// For each interface: true if the protocol shuts it down, false if the protocol releases it.
  std::map<zorid_t, bool> shutStates;
  /// The protocol that sends the signal.
  ProtocolType protocol = LLDP;
};

/// A blocking signal.
struct ZORL2_EXPORT BlockStateInfoSyncSignal {
  /// For each interface: the state that the protocol imposes.
  std::map<zorid_t, BlockState> blockStates;
  /// The protocol that sends the signal.
  ProtocolType protocol = LLDP;
};
