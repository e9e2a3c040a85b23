// The native enumerations that are not nested in a record. Each is a signed 32-bit number, so any
// 32-bit value is a defined value; what a converter does with one outside the list stands at the
// converter.
#pragma once

#include <cstdint>

// The layer-2 protocols that shut down or block an interface, or that a client registers for.
// Numbered from LLDP = 0 with the unknown protocol last; the message enumeration of the same name
// starts with the unknown one, so the two numbers of a protocol are never the same.
enum ProtocolType : std::int32_t {
  LLDP = 0,
  L2VM = 1,
  LACP = 2,
  STP = 3,
  ERPS = 4,
  CFM = 5,
  LBD = 6,
  LFD = 7,
  EFM = 8,
  L1_PROTO = 9,
  L2_PROTO = 10,
  BACKUPLINK = 11,
  PROTOCOL_UNKNOWN = 12,
};

// The forwarding state of an interface for one protocol. Numbered as on the wire.
enum BlockState : std::int32_t {
  BLOCK_STATE_FORWARD = 0,
  BLOCK_STATE_BLOCK = 1,
};

// The class of an interface entry, and what a client subscribes to. Numbered as on the wire.
enum InterfaceCategory : std::int32_t {
  L1 = 0,
  L2 = 1,
  VP = 2,
  L2_SUB_IF = 3,
  VIRTUAL_IF = 4,
};
