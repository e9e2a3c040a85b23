// Not installed. The translations of protocol types and block states, inline for the converters;
// enum_serialization.h exports and documents them.
#pragma once

#include <cstdint>

#include "information_client.pb.h"
#include "intf_state.pb.h"
#include "native/l2_enums.h"

namespace zorl2_mapping {

// Both enumerations list the same protocols in the same order, except the unknown protocol: it is
// the first in a message and the last in a native record.
static_assert(zorl2::protobuf::PROTOCOL_UNKNOWN == 0 && zorl2::protobuf::LLDP == LLDP + 1 &&
                  zorl2::protobuf::BACKUPLINK == BACKUPLINK + 1,
              "a message protocol has a new number");
static_assert(PROTOCOL_UNKNOWN == BACKUPLINK + 1, "the unknown protocol is the last native one");

inline zorl2::protobuf::ProtocolType ToMessage(ProtocolType native) noexcept {
  const auto number = static_cast<std::uint32_t>(native);
  if (number >= static_cast<std::uint32_t>(PROTOCOL_UNKNOWN))
    return zorl2::protobuf::PROTOCOL_UNKNOWN;
  return static_cast<zorl2::protobuf::ProtocolType>(number + 1);
}

inline ProtocolType ToNative(zorl2::protobuf::ProtocolType message) noexcept {
  const auto number = static_cast<std::uint32_t>(message);
  if (number == 0 || number > static_cast<std::uint32_t>(zorl2::protobuf::BACKUPLINK))
    return PROTOCOL_UNKNOWN;
  return static_cast<ProtocolType>(number - 1);
}

inline zorl2::protobuf::BlockState ToMessage(BlockState native) noexcept {
  return native == BLOCK_STATE_BLOCK ? zorl2::protobuf::BLOCK_STATE_BLOCK
                                     : zorl2::protobuf::BLOCK_STATE_FORWARD;
}

inline BlockState ToNative(zorl2::protobuf::BlockState message) noexcept {
  return message == zorl2::protobuf::BLOCK_STATE_BLOCK ? BLOCK_STATE_BLOCK : BLOCK_STATE_FORWARD;
}

}  // namespace zorl2_mapping
