#include "convert/intf_state_converter.h"

#include <cstdlib>
#include <map>

#include "convert/enum_mapping.h"
#include "convert/state_merge.h"
#include "convert/zorid_mapping.h"
#include "native/pvex_fault.h"

namespace pb = zorl2::protobuf;
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

// A state applied to the wrong interface is worse than a restart, so a malformed identifier ends
// the process. The message is an empty text in a buffer of the size that the framework expects.
[[noreturn]] static void EndProcess(const char* function, int line) {
  pvex_print_backtrace();
  char message[350] = {};
  pvex_gen_fault(1, function, __FILE__, line, message);
  std::exit(1);
}

// Fault reports are told apart by their line, so each site stays on its own. The two on the way to
// a message are defensive: that direction of an identifier cannot fail.
#define FAULT_AT(line)                                        \
  static_assert(__LINE__ == (line), "this fault site moved"); \
  EndProcess(__func__, __LINE__)

ShutStateConverter::~ShutStateConverter() = default;

bool ShutStateConverter::Convert(const pb::ShutStateSync& message,
                                 ShutStateInfoSyncSignal& signal) {
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
  message.Clear();
  message.set_shutprotocol(protocolTypeToMessage.at(signal.protocol));
  auto& intfs = *message.mutable_intfs();
  intfs.Reserve(static_cast<int>(signal.shutStates.size()));
  for (const auto& [id, state] : signal.shutStates) {
    pb::ShutStateInfo& info = *intfs.Add();
    if (!ToMessage(id, ZORL2_NESTED(info, zorid))) {
      FAULT_AT(80);
    }
    info.set_state(state);
  }
  return true;
}

// The block signal differs in the value alone: its states go through the total functions, so that
// no number is refused.
BlockStateConverter::~BlockStateConverter() = default;

bool BlockStateConverter::Convert(const pb::BlockStateSync& message,
                                  BlockStateInfoSyncSignal& signal) {
  if (!message.IsInitialized()) return false;
  signal.protocol = protocolTypeFromMessage.at(message.blockprotocol());
  // Merged on purpose, as above.
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
  message.Clear();
  message.set_blockprotocol(protocolTypeToMessage.at(signal.protocol));
  auto& intfs = *message.mutable_intfs();
  intfs.Reserve(static_cast<int>(signal.blockStates.size()));
  for (const auto& [id, state] : signal.blockStates) {
    pb::BlockStateInfo& info = *intfs.Add();
    if (!ToMessage(id, ZORL2_NESTED(info, zorid))) {
      FAULT_AT(116);
    }
    info.set_state(ToMessage(state));
  }
  return true;
}
