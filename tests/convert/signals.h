// One interface for the two state signals, so that a test of both is written once.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>

#include "convert/intf_state_converter.h"

namespace zorl2_test {

namespace pb = zorl2::protobuf;

inline zorid_t Id(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d) {
  return zorid_t{{a, b, c, d}};
}

struct Shut {
  using Message = pb::ShutStateSync;
  using Info = pb::ShutStateInfo;
  using Signal = ShutStateInfoSyncSignal;
  using Converter = ShutStateConverter;
  using States = std::map<zorid_t, bool>;
  static constexpr bool kOn = true;
  static constexpr bool kOff = false;
  static constexpr bool kMessageOn = true;
  static constexpr bool kMessageOff = false;
  static constexpr auto kStates = &Signal::shutStates;
  static void SetProtocol(Message& message, pb::ProtocolType value) {
    message.set_shutprotocol(value);
  }
  static bool HasProtocol(const Message& message) { return message.has_shutprotocol(); }
  static pb::ProtocolType Protocol(const Message& message) { return message.shutprotocol(); }
};

struct Block {
  using Message = pb::BlockStateSync;
  using Info = pb::BlockStateInfo;
  using Signal = BlockStateInfoSyncSignal;
  using Converter = BlockStateConverter;
  using States = std::map<zorid_t, BlockState>;
  static constexpr BlockState kOn = BLOCK_STATE_BLOCK;
  static constexpr BlockState kOff = BLOCK_STATE_FORWARD;
  static constexpr pb::BlockState kMessageOn = pb::BLOCK_STATE_BLOCK;
  static constexpr pb::BlockState kMessageOff = pb::BLOCK_STATE_FORWARD;
  static constexpr auto kStates = &Signal::blockStates;
  static void SetProtocol(Message& message, pb::ProtocolType value) {
    message.set_blockprotocol(value);
  }
  static bool HasProtocol(const Message& message) { return message.has_blockprotocol(); }
  static pb::ProtocolType Protocol(const Message& message) { return message.blockprotocol(); }
};

template <typename Case>
typename Case::Message EmptyMessage(pb::ProtocolType protocol) {
  typename Case::Message message;
  Case::SetProtocol(message, protocol);
  return message;
}

// Adds an element whose identifier has these values.
template <typename Case>
typename Case::Info& AddValues(typename Case::Message& message,
                               std::initializer_list<std::uint32_t> values, bool on) {
  typename Case::Info& info = *message.add_intfs();
  info.mutable_zorid();
  for (const std::uint32_t value : values) info.mutable_zorid()->add_value(value);
  info.set_state(on ? Case::kMessageOn : Case::kMessageOff);
  return info;
}

template <typename Case>
typename Case::Info& Add(typename Case::Message& message, const zorid_t& id, bool on) {
  return AddValues<Case>(message, {id.octets[0], id.octets[1], id.octets[2], id.octets[3]}, on);
}

}  // namespace zorl2_test
