/// \file
/// An operation on one member port of a link aggregation.
#pragma once

#include <cstdint>

#include "native/export.h"
#include "native/zorid.h"

/// A member operation. Plain data of 24 bytes; the manager shares the layout.
struct ZORL2_EXPORT LagMemberOperation {
  /// The aggregation.
  zorid_t lag;
  /// The member port.
  zorid_t member;
  /// Opaque: conversions carry all 64 bits unchanged.
  std::uint64_t token = 0;
  /// The manager's own 32 bits. No message carries them, and no conversion reads or writes them.
  std::uint32_t managerData = 0;
  /// Whether the member receives frames of the aggregation.
  bool collecting = false;
  /// Whether the member sends frames of the aggregation.
  bool distributing = false;
};
