#include "convert/enum_serialization.h"

#include <cstdint>

namespace pb = zorl2::protobuf;

// Both enumerations name the same protocols in the same order and differ only in where the unknown
// one stands: first in a message, last natively.
static_assert(pb::PROTOCOL_UNKNOWN == 0 && pb::LLDP == LLDP + 1 && pb::BACKUPLINK == BACKUPLINK + 1,
              "a protocol has a new number: the target check-schema says what that breaks");
static_assert(PROTOCOL_UNKNOWN == BACKUPLINK + 1, "the unknown protocol comes last natively");

pb::ProtocolType SerializeProtocolType(ProtocolType native) noexcept {
  const auto number = static_cast<std::uint32_t>(native);
  if (number >= static_cast<std::uint32_t>(PROTOCOL_UNKNOWN)) return pb::PROTOCOL_UNKNOWN;
  return static_cast<pb::ProtocolType>(number + 1);
}

ProtocolType DeserializeProtocolType(pb::ProtocolType message) noexcept {
  const auto number = static_cast<std::uint32_t>(message);
  if (number == 0 || number > static_cast<std::uint32_t>(pb::BACKUPLINK)) return PROTOCOL_UNKNOWN;
  return static_cast<ProtocolType>(number - 1);
}

pb::BlockState SerializeBlockState(BlockState native) noexcept {
  return native == BLOCK_STATE_BLOCK ? pb::BLOCK_STATE_BLOCK : pb::BLOCK_STATE_FORWARD;
}

BlockState DeserializeBlockState(pb::BlockState message) noexcept {
  return message == pb::BLOCK_STATE_BLOCK ? BLOCK_STATE_BLOCK : BLOCK_STATE_FORWARD;
}
