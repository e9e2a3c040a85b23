/// \file
/// The native enumerations that are not nested in a record. Each is a signed 32-bit number. Every
/// 32-bit value is a defined value; each converter documents what it does with an unlisted one.
#pragma once

#include <cstdint>

/// The protocols that shut down or block an interface, or for which a client registers. The message
/// enumeration of the same name starts with the unknown protocol, so a protocol never has the same
/// number on both sides.
enum ProtocolType : std::int32_t {
  LLDP = 0,               ///< Link Layer Discovery Protocol.
  L2VM = 1,               ///< The manager's L2VM protocol.
  LACP = 2,               ///< Link Aggregation Control Protocol.
  STP = 3,                ///< Spanning Tree Protocol.
  ERPS = 4,               ///< Ethernet Ring Protection Switching.
  CFM = 5,                ///< Connectivity Fault Management.
  LBD = 6,                ///< The manager's LBD protocol.
  LFD = 7,                ///< The manager's LFD protocol.
  EFM = 8,                ///< Ethernet in the First Mile.
  L1_PROTO = 9,           ///< Layer 1. State signals reject it.
  L2_PROTO = 10,          ///< Layer 2. State signals reject it.
  BACKUPLINK = 11,        ///< Backup link.
  PROTOCOL_UNKNOWN = 12,  ///< A protocol that is not listed.
};

/// The forwarding state of an interface for one protocol. The numbers are those of the message.
enum BlockState : std::int32_t {
  BLOCK_STATE_FORWARD = 0,  ///< Frames pass.
  BLOCK_STATE_BLOCK = 1,    ///< Frames are dropped.
};

/// The category of an interface entry, to which a client subscribes. The numbers are those of the
/// message.
enum InterfaceCategory : std::int32_t {
  L1 = 0,          ///< Layer-1 interface.
  L2 = 1,          ///< Layer-2 interface.
  VP = 2,          ///< The manager's VP class.
  L2_SUB_IF = 3,   ///< Layer-2 sub-interface.
  VIRTUAL_IF = 4,  ///< Virtual interface.
};
