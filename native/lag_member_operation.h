// An operation on one member port of a link aggregation.
#pragma once

#include <cstdint>

#include "native/export.h"
#include "native/zorid.h"

// Plain data, 24 octets. The manager shares the order and the widths of the members.
struct ZORL2_EXPORT LagMemberOperation {
  // The aggregation.
  zorid_t lag;
  // The member port.
  zorid_t member;
  // Opaque: carried unchanged for the requester, all 64 bits of it.
  std::uint64_t token = 0;
  // The manager's own 32 bits. Not part of the message: no conversion reads or writes them.
  std::uint32_t managerData = 0;
  // The member receives frames of the aggregation.
  bool collecting = false;
  // The member sends frames of the aggregation.
  bool distributing = false;
};
