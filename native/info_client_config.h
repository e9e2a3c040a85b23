// The registration of one client of the manager's information service.
#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "native/export.h"
#include "native/l2_enums.h"

// Plain data that owns its set and its token.
struct ZORL2_EXPORT ZORL2InfoClientConfig {
  // The protocol on whose behalf the client acts.
  ProtocolType protocolType = LLDP;
  // The categories of interface that the client wants to hear about, ascending.
  std::set<InterfaceCategory> interfaceCategories;
  // Opaque: carried unchanged, all 64 bits of it.
  std::uint64_t clientAddress = 0;
  // Opaque: carried unchanged, zero octets included.
  std::string token;
};
