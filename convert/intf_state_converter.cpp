#include "convert/intf_state_converter.h"

#include <iterator>
#include <map>

#include "convert/internal/fault_report.h"
#include "convert/internal/nested_message.h"
#include "convert/internal/protocol_mapping.h"
#include "convert/internal/zorid_mapping.h"

namespace pb = zorl2::protobuf;

using zorl2_mapping::FaultSite;
using zorl2_mapping::TerminateProcess;
using zorl2_mapping::ToMessage;
using zorl2_mapping::ToNative;

template class Converter<pb::ShutStateSync, ShutStateInfoSyncSignal>;
template class Converter<pb::BlockStateSync, BlockStateInfoSyncSignal>;

namespace {

// The two maps are inverses of each other. L1_PROTO and L2_PROTO have no entry, so a state signal
// for either is rejected in both directions.
// clang-format off
const std::map<pb::ProtocolType, ProtocolType> protocolTypeFromMessage = {
    {pb::PROTOCOL_UNKNOWN, PROTOCOL_UNKNOWN}, {pb::LLDP, LLDP},
    {pb::L2VM, L2VM}, {pb::LACP, LACP}, {pb::STP, STP},
    {pb::ERPS, ERPS}, {pb::CFM, CFM}, {pb::LBD, LBD},
    {pb::LFD, LFD}, {pb::EFM, EFM}, {pb::BACKUPLINK, BACKUPLINK},
};
const std::map<ProtocolType, pb::ProtocolType> protocolTypeToMessage = {
    {PROTOCOL_UNKNOWN, pb::PROTOCOL_UNKNOWN}, {LLDP, pb::LLDP},
    {L2VM, pb::L2VM}, {LACP, pb::LACP}, {STP, pb::STP},
    {ERPS, pb::ERPS}, {CFM, pb::CFM}, {LBD, pb::LBD},
    {LFD, pb::LFD}, {EFM, pb::EFM}, {BACKUPLINK, pb::BACKUPLINK},
};
// clang-format on

// The differences between the two signals: the names of their members and the translation of a
// state.
struct Shut {
  using Message = pb::ShutStateSync;
  using Signal = ShutStateInfoSyncSignal;
  static constexpr FaultSite kToNative = FaultSite::kShutToNative;
  static constexpr FaultSite kToMessage = FaultSite::kShutToMessage;

  static pb::ProtocolType Protocol(const Message& message) { return message.shutprotocol(); }
  static void SetProtocol(Message& message, pb::ProtocolType protocol) {
    message.set_shutprotocol(protocol);
  }
  static constexpr auto kStates = &Signal::shutStates;
  static bool NativeState(bool state) { return state; }
  static bool MessageState(bool state) { return state; }
};

struct Block {
  using Message = pb::BlockStateSync;
  using Signal = BlockStateInfoSyncSignal;
  static constexpr FaultSite kToNative = FaultSite::kBlockToNative;
  static constexpr FaultSite kToMessage = FaultSite::kBlockToMessage;

  static pb::ProtocolType Protocol(const Message& message) { return message.blockprotocol(); }
  static void SetProtocol(Message& message, pb::ProtocolType protocol) {
    message.set_blockprotocol(protocol);
  }
  static constexpr auto kStates = &Signal::blockStates;
  static BlockState NativeState(pb::BlockState state) { return ToNative(state); }
  static pb::BlockState MessageState(BlockState state) { return ToMessage(state); }
};

template <typename Kind>
bool MessageToNative(const typename Kind::Message& message, typename Kind::Signal& signal) {
  if (!message.IsInitialized()) return false;
  signal.protocol = protocolTypeFromMessage.at(Kind::Protocol(message));
  // Merges: interfaces that the message does not name keep their states.
  auto& states = signal.*Kind::kStates;
  // Peers send ascending identifiers, so the entry after the one set last is a good hint. The hint
  // does not step past the last entry, which would walk up the tree.
  auto hint = states.begin();
  for (const auto& info : message.intfs()) {
    zorid_t id;
    if (!ToNative(info.zorid(), id)) TerminateProcess(Kind::kToNative);
    const auto entry = states.insert_or_assign(hint, id, Kind::NativeState(info.state()));
    if (hint != states.end()) hint = std::next(entry);
  }
  return true;
}

template <typename Kind>
bool NativeToMessage(const typename Kind::Signal& signal, typename Kind::Message& message) {
  message.Clear();
  Kind::SetProtocol(message, protocolTypeToMessage.at(signal.protocol));
  const auto& states = signal.*Kind::kStates;
  auto& intfs = *message.mutable_intfs();
  intfs.Reserve(static_cast<int>(states.size()));
  for (const auto& [id, state] : states) {
    auto& info = *intfs.Add();
    // This direction of an identifier cannot fail. The report is ready for a conversion that can.
    if (!ToMessage(id, ZORL2_NESTED(info, zorid))) TerminateProcess(Kind::kToMessage);
    info.set_state(Kind::MessageState(state));
  }
  return true;
}

}  // namespace

ShutStateConverter::~ShutStateConverter() = default;

bool ShutStateConverter::Convert(const pb::ShutStateSync& message,
                                 ShutStateInfoSyncSignal& signal) {
  return MessageToNative<Shut>(message, signal);
}

bool ShutStateConverter::Convert(const ShutStateInfoSyncSignal& signal,
                                 pb::ShutStateSync& message) {
  return NativeToMessage<Shut>(signal, message);
}

BlockStateConverter::~BlockStateConverter() = default;

bool BlockStateConverter::Convert(const pb::BlockStateSync& message,
                                  BlockStateInfoSyncSignal& signal) {
  return MessageToNative<Block>(message, signal);
}

bool BlockStateConverter::Convert(const BlockStateInfoSyncSignal& signal,
                                  pb::BlockStateSync& message) {
  return NativeToMessage<Block>(signal, message);
}
