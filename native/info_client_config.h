/// \file
/// The registration of one client of the manager's information service.
#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "native/export.h"
#include "native/l2_enums.h"

/// A registration. Plain data that owns its set and its token.
struct ZORL2_EXPORT ZORL2InfoClientConfig {
  /// The protocol for which the client acts.
  ProtocolType protocolType = LLDP;
  /// The categories of interface that the client subscribes to.
  std::set<InterfaceCategory> interfaceCategories;
  /// Opaque: conversions carry all 64 bits unchanged.
  std::uint64_t clientAddress = 0;
  /// Opaque: conversions carry every byte unchanged, zero bytes included.
  std::string token;
};
