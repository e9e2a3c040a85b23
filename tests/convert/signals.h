// The two state signals behind one face, so that what both promise is written once.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <map>
#include <ostream>
#include <utility>
#include <vector>

#include "convert/intf_state_converter.h"

namespace zorl2_test {

namespace pb = zorl2::protobuf;

inline zorid_t Id(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d) {
  return zorid_t{{a, b, c, d}};
}

inline void Fill(pb::Zorid& message, std::initializer_list<std::uint32_t> values) {
  message.clear_value();
  for (const std::uint32_t value : values) message.add_value(value);
}

inline void Fill(pb::Zorid& message, const zorid_t& id) {
  Fill(message, {id.octets[0], id.octets[1], id.octets[2], id.octets[3]});
}

// Each case names the types, the two states and the three places where the messages differ.
struct Shut {
  using Message = pb::ShutStateSync;
  using Info = pb::ShutStateInfo;
  using Signal = ShutStateInfoSyncSignal;
  using Converter = ShutStateConverter;
  using State = bool;
  static constexpr bool kOn = true;
  static constexpr bool kOff = false;
  static constexpr bool kMessageOn = true;
  static constexpr bool kMessageOff = false;
  static std::map<zorid_t, bool>& States(Signal& signal) { return signal.shutStates; }
  static const std::map<zorid_t, bool>& States(const Signal& signal) { return signal.shutStates; }
  static void SetProtocol(Message& message, pb::ProtocolType value) {
    message.set_shutprotocol(value);
  }
  static void ClearProtocol(Message& message) { message.clear_shutprotocol(); }
  static bool HasProtocol(const Message& message) { return message.has_shutprotocol(); }
  static pb::ProtocolType Protocol(const Message& message) { return message.shutprotocol(); }
};

struct Block {
  using Message = pb::BlockStateSync;
  using Info = pb::BlockStateInfo;
  using Signal = BlockStateInfoSyncSignal;
  using Converter = BlockStateConverter;
  using State = BlockState;
  static constexpr BlockState kOn = BLOCK_STATE_BLOCK;
  static constexpr BlockState kOff = BLOCK_STATE_FORWARD;
  static constexpr pb::BlockState kMessageOn = pb::BLOCK_STATE_BLOCK;
  static constexpr pb::BlockState kMessageOff = pb::BLOCK_STATE_FORWARD;
  static std::map<zorid_t, BlockState>& States(Signal& signal) { return signal.blockStates; }
  static const std::map<zorid_t, BlockState>& States(const Signal& signal) {
    return signal.blockStates;
  }
  static void SetProtocol(Message& message, pb::ProtocolType value) {
    message.set_blockprotocol(value);
  }
  static void ClearProtocol(Message& message) { message.clear_blockprotocol(); }
  static bool HasProtocol(const Message& message) { return message.has_blockprotocol(); }
  static pb::ProtocolType Protocol(const Message& message) { return message.blockprotocol(); }
};

template <typename Case>
typename Case::Info& Add(typename Case::Message& message, const zorid_t& id, bool on) {
  typename Case::Info& info = *message.add_intfs();
  Fill(*info.mutable_zorid(), id);
  info.set_state(on ? Case::kMessageOn : Case::kMessageOff);
  return info;
}

template <typename Case>
typename Case::Message EmptyMessage(pb::ProtocolType protocol) {
  typename Case::Message message;
  Case::SetProtocol(message, protocol);
  return message;
}

// One field that this version of the schema does not know.
template <typename Message>
void AddUnknownField(Message& message) {
  message.GetReflection()->MutableUnknownFields(&message)->AddVarint(1000, 77);
}

template <typename Message>
bool HasUnknownFields(const Message& message) {
  return !message.GetReflection()->GetUnknownFields(message).empty();
}

template <typename Enum>
constexpr Enum Number(std::int32_t value) {
  return static_cast<Enum>(value);
}

// Numbers that no enumeration of ours lists, among them those whose low bits look like a listed
// one.
constexpr std::int32_t kUnlisted[] = {-1,
                                      -2,
                                      13,
                                      14,
                                      255,
                                      256,
                                      257,
                                      65536,
                                      65537,
                                      65548,
                                      16777217,
                                      std::numeric_limits<std::int32_t>::min() + 1,
                                      std::numeric_limits<std::int32_t>::min(),
                                      std::numeric_limits<std::int32_t>::max()};

}  // namespace zorl2_test

// What a failed comparison prints instead of bytes.
inline std::ostream& operator<<(std::ostream& out, const zorid_t& id) {
  return out << int{id.octets[0]} << '.' << int{id.octets[1]} << '.' << int{id.octets[2]} << '.'
             << int{id.octets[3]};
}
