#include "convert/intf_state_converter.h"

#include <map>

#include "convert/enum_mapping.h"
#include "convert/fault_site.h"
#include "convert/large_message.h"
#include "convert/one_pass_merge.h"
#include "convert/state_merge.h"
#include "convert/zorid_mapping.h"

namespace pb = zorl2::protobuf;
using zorl2_mapping::MergeInOnePass;
using zorl2_mapping::Overwriting;
using zorl2_mapping::StateMerge;
using zorl2_mapping::ToMessage;
using zorl2_mapping::ToNative;

template class Converter<pb::ShutStateSync, ShutStateInfoSyncSignal>;
template class Converter<pb::BlockStateSync, BlockStateInfoSyncSignal>;

// No entry for L1_PROTO and L2_PROTO, on purpose: neither shuts down or blocks an interface of its
// own, and a signal that claims so is refused in both directions. The two maps are inverses of each
// other and are built while the library is loaded, so that a first signal costs no more than any
// other.
// clang-format off
static const std::map<pb::ProtocolType, ProtocolType> protocolTypeFromMessage = {
    {pb::PROTOCOL_UNKNOWN, PROTOCOL_UNKNOWN}, {pb::LLDP, LLDP},
    {pb::L2VM, L2VM}, {pb::LACP, LACP}, {pb::STP, STP},
    {pb::ERPS, ERPS}, {pb::CFM, CFM}, {pb::LBD, LBD},
    {pb::LFD, LFD}, {pb::EFM, EFM}, {pb::BACKUPLINK, BACKUPLINK},
};
static const std::map<ProtocolType, pb::ProtocolType> protocolTypeToMessage = {
    {PROTOCOL_UNKNOWN, pb::PROTOCOL_UNKNOWN}, {LLDP, pb::LLDP},
    {L2VM, pb::L2VM}, {LACP, pb::LACP}, {STP, pb::STP},
    {ERPS, pb::ERPS}, {CFM, pb::CFM}, {LBD, pb::LBD},
    {LFD, pb::LFD}, {EFM, pb::EFM}, {BACKUPLINK, pb::BACKUPLINK},
};
// clang-format on

// Both converters follow one pattern. The block signal differs in the value alone: its states go
// through the total functions, so that no number is refused. The fault sites on the way to a
// message are defensive: that direction of an identifier cannot fail. They are kept so that a later
// one that can is noticed.
ShutStateConverter::~ShutStateConverter() = default;
BlockStateConverter::~BlockStateConverter() = default;

// A message that lacks a field leaves the signal alone. What is not merged in one pass, or refused
// there, is tested as a whole before the first state is set.
bool ShutStateConverter::Convert(const pb::ShutStateSync& message,
                                 ShutStateInfoSyncSignal& signal) {
  const auto known = protocolTypeFromMessage.find(message.shutprotocol());
  if (message.has_shutprotocol() && known != protocolTypeFromMessage.end() &&
      MergeInOnePass(message, known->second, signal.protocol, signal.shutStates)) {
    return true;
  }
  if (!message.IsInitialized()) return false;
  signal.protocol = protocolTypeFromMessage.at(message.shutprotocol());
  // Merged on purpose: a signal names what has changed, and the rest of the map still holds.
  StateMerge states(signal.shutStates);
  for (const pb::ShutStateInfo& info : message.intfs()) {
    zorid_t id;
    if (!ToNative(info.zorid(), id)) {
      FAULT_AT(64);
    }
    states.Set(id, info.state());
  }
  return true;
}

bool ShutStateConverter::Convert(const ShutStateInfoSyncSignal& signal,
                                 pb::ShutStateSync& message) {
  // Clears the message too, and what is left of its interfaces at the end.
  Overwriting intfs(message);
  message.set_shutprotocol(protocolTypeToMessage.at(signal.protocol));
  intfs.Reserve(signal.shutStates.size());
  for (const auto& [id, state] : signal.shutStates) {
    pb::ShutStateInfo& info = intfs.Add();
    if (!ToMessage(id, ZORL2_NESTED(info, zorid))) {
      FAULT_AT(80);
    }
    info.set_state(state);
  }
  return true;
}

bool BlockStateConverter::Convert(const pb::BlockStateSync& message,
                                  BlockStateInfoSyncSignal& signal) {
  const auto known = protocolTypeFromMessage.find(message.blockprotocol());
  if (message.has_blockprotocol() && known != protocolTypeFromMessage.end() &&
      MergeInOnePass(message, known->second, signal.protocol, signal.blockStates)) {
    return true;
  }
  if (!message.IsInitialized()) return false;
  signal.protocol = protocolTypeFromMessage.at(message.blockprotocol());
  StateMerge states(signal.blockStates);
  for (const pb::BlockStateInfo& info : message.intfs()) {
    zorid_t id;
    if (!ToNative(info.zorid(), id)) {
      FAULT_AT(100);
    }
    states.Set(id, ToNative(info.state()));
  }
  return true;
}

bool BlockStateConverter::Convert(const BlockStateInfoSyncSignal& signal,
                                  pb::BlockStateSync& message) {
  // Clears the message, as above.
  Overwriting intfs(message);
  message.set_blockprotocol(protocolTypeToMessage.at(signal.protocol));
  intfs.Reserve(signal.blockStates.size());
  for (const auto& [id, state] : signal.blockStates) {
    pb::BlockStateInfo& info = intfs.Add();
    if (!ToMessage(id, ZORL2_NESTED(info, zorid))) {
      FAULT_AT(116);
    }
    info.set_state(ToMessage(state));
  }
  return true;
}
