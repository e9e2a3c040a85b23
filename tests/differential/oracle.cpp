#include "tests/differential/oracle.h"

#include <utility>

namespace oracle {

namespace {

bool Complete(const General& m) {
  return m.intf_name && m.phy_addr && m.redundancy_group_id && m.redundancy_group_phy_addr;
}

bool Complete(const Status& m) {
  return m.adminStatus && m.operationalStatus && m.linkStatus && m.operationalSpeed &&
         m.extraShutdown && m.extraBlocking && m.configShutdown;
}

bool Complete(const Physical& m) { return m.intf_mtu && m.eth_speed && m.eth_duplex_mode; }

bool Complete(const Flags& m) {
  return m.if_l2_switching && m.if_in_bundle && m.l2_bundle && m.l2_sub_if && m.point_to_point &&
         m.if_multicast;
}

bool Complete(const Type& m) {
  return m.interfaceType && m.interfaceFlags && Complete(*m.interfaceFlags) && m.vlanType;
}

bool Complete(const Block& m) { return m.protocol && m.state; }

thread_local std::set<std::string> notes;

// Notes the condition if it holds, and returns whether it does.
bool Met(bool condition, const char* what) {
  if (condition) notes.insert(what);
  return condition;
}

// An enumeration whose values run from 0 to last.
bool Unlisted(std::int32_t value, std::int32_t last, const char* what) {
  return Met(value < 0 || value > last, what);
}

template <typename Message>
bool Incomplete(const Message& message) {
  return Met(!Complete(message), "a required field is missing");
}

}  // namespace

std::set<std::string> TakeNotes() { return std::exchange(notes, {}); }

bool Complete(const Entry& m) {
  if (!m.zorid) return false;
  if (!m.generalInfo || !Complete(*m.generalInfo)) return false;
  if (!m.statusInfo || !Complete(*m.statusInfo)) return false;
  if (!m.physicalInfo || !Complete(*m.physicalInfo)) return false;
  if (!m.typeInfo || !Complete(*m.typeInfo)) return false;
  for (const Block& block : m.blockInfo) {
    if (!Complete(block)) return false;
  }
  return m.intfCategory.has_value();
}

bool Complete(const Signal& m) {
  if (!m.protocol) return false;
  for (const State& state : m.intfs) {
    if (!state.zorid || !state.state) return false;
  }
  return true;
}

bool Complete(const Client& m) {
  return m.clientAddress && m.protocolType && m.intfCategory && m.intfCategory->l1 &&
         m.intfCategory->l2 && m.intfCategory->vp && m.intfCategory->l2_sub_if &&
         m.intfCategory->virtual_if && m.token;
}

std::int32_t SerializeProtocol(std::int32_t native) {
  if (Unlisted(native, 12, "unlisted protocol") || native == 12) return 0;
  return native + 1;
}

std::int32_t DeserializeProtocol(std::int32_t message) {
  if (Unlisted(message, 12, "unlisted protocol") || message == 0) return 12;
  return message - 1;
}

std::int32_t OneOrZero(std::int32_t blockState) {
  Unlisted(blockState, 1, "unlisted block state");
  return blockState == 1 ? 1 : 0;
}

Outcome ToNative(const Zorid& message, zorid_t& native) {
  native.octets[0] = native.octets[1] = native.octets[2] = native.octets[3] = 0;
  if (Met(message.value.size() != 4, "an identifier has a wrong count")) return Outcome::kFalse;
  for (std::size_t i = 0; i < 4; ++i) {
    Met(message.value[i] > 255, "a value of an identifier is above 255");
    native.octets[i] = static_cast<std::uint8_t>(message.value[i] % 256);
  }
  return Outcome::kTrue;
}

Outcome ToNative(const General& message, IntfEntry::GeneralInfo& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  native.intf_name = *message.intf_name;
  native.phy_addr = *message.phy_addr;
  if (!Met(!message.bridge_port_number, "no bridge port number")) {
    Met(*message.bridge_port_number > 65535, "bridge port number above 65535");
    native.bridge_port_number = static_cast<std::uint16_t>(*message.bridge_port_number % 65536);
  }
  native.redundancy_group_id = *message.redundancy_group_id;
  native.redundancy_group_phy_addr = *message.redundancy_group_phy_addr;
  return Outcome::kTrue;
}

Outcome ToNative(const Status& message, IntfEntry::StatusInfo& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  if (Unlisted(*message.adminStatus, 1, "unlisted administrative status"))
    return Outcome::kInvalidKey;
  native.adminStatus = static_cast<IntfEntry::AdminStatus>(*message.adminStatus);
  if (Unlisted(*message.operationalStatus, 1, "unlisted operational status"))
    return Outcome::kInvalidKey;
  native.operationalStatus = static_cast<IntfEntry::OperationalStatus>(*message.operationalStatus);
  if (Unlisted(*message.linkStatus, 1, "unlisted link status")) return Outcome::kInvalidKey;
  native.linkStatus = static_cast<IntfEntry::LinkStatus>(*message.linkStatus);
  native.operationalSpeed = *message.operationalSpeed;
  native.extraShutdown = *message.extraShutdown;
  native.extraBlocking = *message.extraBlocking;
  native.configShutdown = *message.configShutdown;
  return Outcome::kTrue;
}

Outcome ToNative(const Physical& message, IntfEntry::PhysicalInfo& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  native.intf_mtu = *message.intf_mtu;
  if (Unlisted(*message.eth_speed, 11, "unlisted speed")) return Outcome::kInvalidKey;
  native.eth_speed = static_cast<IntfEntry::EthernetSpeed>(*message.eth_speed);
  if (Unlisted(*message.eth_duplex_mode, 2, "unlisted duplex mode")) return Outcome::kInvalidKey;
  native.eth_duplex_mode = static_cast<IntfEntry::EthernetDuplexMode>(*message.eth_duplex_mode);
  return Outcome::kTrue;
}

Outcome ToNative(const Flags& message, IntfEntry::InterfaceFlags& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  native.if_l2_switching = *message.if_l2_switching;
  native.if_in_bundle = *message.if_in_bundle;
  native.l2_bundle = *message.l2_bundle;
  native.l2_sub_if = *message.l2_sub_if;
  native.point_to_point = *message.point_to_point;
  native.if_multicast = *message.if_multicast;
  return Outcome::kTrue;
}

Outcome ToNative(const Type& message, IntfEntry::TypeInfo& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  if (Unlisted(*message.interfaceType, 4, "unlisted interface type")) return Outcome::kInvalidKey;
  native.interfaceType = static_cast<IntfEntry::InterfaceType>(*message.interfaceType);
  ToNative(*message.interfaceFlags, native.interfaceFlags);
  if (Unlisted(*message.vlanType, 4, "unlisted VLAN type")) return Outcome::kInvalidKey;
  native.vlanType = static_cast<IntfEntry::VlanType>(*message.vlanType);
  return Outcome::kTrue;
}

Outcome ToNative(const Block& message, IntfEntry::BlockInfo& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  native.protocol = static_cast<ProtocolType>(DeserializeProtocol(*message.protocol));
  native.state = static_cast<BlockState>(OneOrZero(*message.state));
  return Outcome::kTrue;
}

Outcome ToNative(const Entry& message, EntryRecord& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  EntryRecord made;
  ToNative(*message.zorid, made.id);
  if (!Met(!message.parent, "no parent")) ToNative(*message.parent, made.parent);
  ToNative(*message.generalInfo, made.generalInfo);
  Outcome outcome = ToNative(*message.statusInfo, made.statusInfo);
  if (outcome != Outcome::kTrue) return outcome;
  outcome = ToNative(*message.physicalInfo, made.physicalInfo);
  if (outcome != Outcome::kTrue) return outcome;
  outcome = ToNative(*message.typeInfo, made.typeInfo);
  if (outcome != Outcome::kTrue) return outcome;
  for (const std::int32_t protocol : message.shutdownProtos) {
    made.shutdownProtos.push_back(static_cast<ProtocolType>(DeserializeProtocol(protocol)));
  }
  for (const Block& block : message.blockInfo) {
    made.blockInfo.emplace_back();
    ToNative(block, made.blockInfo.back());
  }
  if (Unlisted(*message.intfCategory, 4, "unlisted category")) return Outcome::kMapAt;
  made.interfaceCategory = static_cast<InterfaceCategory>(*message.intfCategory);
  native = made;
  return Outcome::kTrue;
}

Outcome ToNative(const Signal& message, ShutStateInfoSyncSignal& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  const std::int32_t protocol = *message.protocol;
  if (Unlisted(protocol, 12, "unlisted protocol")) return Outcome::kMapAt;
  if (Met(protocol == 10 || protocol == 11, "L1_PROTO or L2_PROTO")) return Outcome::kMapAt;
  Met(message.intfs.empty(), "no element");
  native.protocol = static_cast<ProtocolType>(DeserializeProtocol(protocol));
  for (const State& state : message.intfs) {
    zorid_t id;
    if (ToNative(*state.zorid, id) != Outcome::kTrue) return Outcome::kFatal;
    Met(native.shutStates.count(id) != 0, "the map holds the interface");
    native.shutStates[id] = *state.state != 0;
  }
  return Outcome::kTrue;
}

Outcome ToNative(const Signal& message, BlockStateInfoSyncSignal& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  const std::int32_t protocol = *message.protocol;
  if (Unlisted(protocol, 12, "unlisted protocol")) return Outcome::kMapAt;
  if (Met(protocol == 10 || protocol == 11, "L1_PROTO or L2_PROTO")) return Outcome::kMapAt;
  Met(message.intfs.empty(), "no element");
  native.protocol = static_cast<ProtocolType>(DeserializeProtocol(protocol));
  for (const State& state : message.intfs) {
    zorid_t id;
    if (ToNative(*state.zorid, id) != Outcome::kTrue) return Outcome::kFatal;
    Met(native.blockStates.count(id) != 0, "the map holds the interface");
    native.blockStates[id] = static_cast<BlockState>(OneOrZero(*state.state));
  }
  return Outcome::kTrue;
}

Outcome ToNative(const Client& message, ZORL2InfoClientConfig& native) {
  if (Incomplete(message)) return Outcome::kFalse;
  native.clientAddress = *message.clientAddress;
  native.protocolType = static_cast<ProtocolType>(DeserializeProtocol(*message.protocolType));
  if (*message.intfCategory->l1) native.interfaceCategories.insert(L1);
  if (*message.intfCategory->l2) native.interfaceCategories.insert(L2);
  if (*message.intfCategory->vp) native.interfaceCategories.insert(VP);
  if (*message.intfCategory->l2_sub_if) native.interfaceCategories.insert(L2_SUB_IF);
  if (*message.intfCategory->virtual_if) native.interfaceCategories.insert(VIRTUAL_IF);
  native.token = *message.token;
  return Outcome::kTrue;
}

Outcome ToNative(const Lag& message, LagMemberOperation& native) {
  if (Met(!message.lag, "no lag") || Met(!message.member, "no member")) return Outcome::kFalse;
  zorid_t lag, member;
  if (ToNative(*message.lag, lag) != Outcome::kTrue) return Outcome::kFalse;
  if (ToNative(*message.member, member) != Outcome::kTrue) return Outcome::kFalse;
  native.lag = lag;
  native.member = member;
  native.token = Met(!message.token, "no token") ? 0 : *message.token;
  native.collecting = Met(!message.collecting, "no collecting") ? false : *message.collecting;
  native.distributing =
      Met(!message.distributing, "no distributing") ? false : *message.distributing;
  return Outcome::kTrue;
}

Outcome ToMessage(const zorid_t& native, Zorid& message) {
  message.value = {native.octets[0], native.octets[1], native.octets[2], native.octets[3]};
  return Outcome::kTrue;
}

Outcome ToMessage(const IntfEntry::GeneralInfo& native, General& message) {
  message.intf_name = native.intf_name;
  message.phy_addr = native.phy_addr;
  message.bridge_port_number = native.bridge_port_number;
  message.redundancy_group_id = native.redundancy_group_id;
  message.redundancy_group_phy_addr = native.redundancy_group_phy_addr;
  return Outcome::kTrue;
}

Outcome ToMessage(const IntfEntry::StatusInfo& native, Status& message) {
  if (Unlisted(native.adminStatus, 1, "unlisted administrative status") ||
      Unlisted(native.operationalStatus, 1, "unlisted operational status") ||
      Unlisted(native.linkStatus, 1, "unlisted link status")) {
    return Outcome::kInvalidKey;
  }
  message.adminStatus = native.adminStatus;
  message.operationalStatus = native.operationalStatus;
  message.linkStatus = native.linkStatus;
  message.operationalSpeed = native.operationalSpeed;
  message.extraShutdown = native.extraShutdown;
  message.extraBlocking = native.extraBlocking;
  message.configShutdown = native.configShutdown;
  return Outcome::kTrue;
}

Outcome ToMessage(const IntfEntry::PhysicalInfo& native, Physical& message) {
  Met(native.intf_mtu > 0xFFFFFFFF, "MTU above 32 bits");
  message.intf_mtu = static_cast<std::uint32_t>(native.intf_mtu % 4294967296U);
  if (Unlisted(native.eth_speed, 11, "unlisted speed")) return Outcome::kInvalidKey;
  message.eth_speed = native.eth_speed;
  if (Unlisted(native.eth_duplex_mode, 2, "unlisted duplex mode")) return Outcome::kInvalidKey;
  message.eth_duplex_mode = native.eth_duplex_mode;
  return Outcome::kTrue;
}

Outcome ToMessage(const IntfEntry::InterfaceFlags& native, Flags& message) {
  message.if_l2_switching = native.if_l2_switching;
  message.if_in_bundle = native.if_in_bundle;
  message.l2_bundle = native.l2_bundle;
  message.l2_sub_if = native.l2_sub_if;
  message.point_to_point = native.point_to_point;
  message.if_multicast = native.if_multicast;
  return Outcome::kTrue;
}

Outcome ToMessage(const IntfEntry::TypeInfo& native, Type& message) {
  if (Unlisted(native.interfaceType, 4, "unlisted interface type")) return Outcome::kInvalidKey;
  message.interfaceType = native.interfaceType;
  message.interfaceFlags.emplace();
  ToMessage(native.interfaceFlags, *message.interfaceFlags);
  if (Unlisted(native.vlanType, 4, "unlisted VLAN type")) return Outcome::kInvalidKey;
  message.vlanType = native.vlanType;
  return Outcome::kTrue;
}

Outcome ToMessage(const IntfEntry::BlockInfo& native, Block& message) {
  message.protocol = SerializeProtocol(native.protocol);
  message.state = OneOrZero(native.state);
  return Outcome::kTrue;
}

Outcome ToMessage(const EntryRecord& native, Entry& message) {
  message = Entry{};
  ToMessage(native.id, message.zorid.emplace());
  ToMessage(native.parent, message.parent.emplace());
  ToMessage(native.generalInfo, message.generalInfo.emplace());
  Outcome outcome = ToMessage(native.statusInfo, message.statusInfo.emplace());
  if (outcome != Outcome::kTrue) return outcome;
  outcome = ToMessage(native.physicalInfo, message.physicalInfo.emplace());
  if (outcome != Outcome::kTrue) return outcome;
  outcome = ToMessage(native.typeInfo, message.typeInfo.emplace());
  if (outcome != Outcome::kTrue) return outcome;
  for (const ProtocolType protocol : native.shutdownProtos) {
    message.shutdownProtos.push_back(SerializeProtocol(protocol));
  }
  for (const IntfEntry::BlockInfo& block : native.blockInfo) {
    ToMessage(block, message.blockInfo.emplace_back());
  }
  if (Unlisted(native.interfaceCategory, 4, "unlisted category")) return Outcome::kMapAt;
  message.intfCategory = native.interfaceCategory;
  return Outcome::kTrue;
}

Outcome ToMessage(const ShutStateInfoSyncSignal& native, Signal& message) {
  message = Signal{};
  const std::int32_t protocol = native.protocol;
  if (Unlisted(protocol, 12, "unlisted protocol")) return Outcome::kMapAt;
  if (Met(protocol == 9 || protocol == 10, "L1_PROTO or L2_PROTO")) return Outcome::kMapAt;
  message.protocol = SerializeProtocol(protocol);
  for (const auto& [id, state] : native.shutStates) {
    message.intfs.emplace_back();
    ToMessage(id, message.intfs.back().zorid.emplace());
    message.intfs.back().state = state ? 1 : 0;
  }
  return Outcome::kTrue;
}

Outcome ToMessage(const BlockStateInfoSyncSignal& native, Signal& message) {
  message = Signal{};
  const std::int32_t protocol = native.protocol;
  if (Unlisted(protocol, 12, "unlisted protocol")) return Outcome::kMapAt;
  if (Met(protocol == 9 || protocol == 10, "L1_PROTO or L2_PROTO")) return Outcome::kMapAt;
  message.protocol = SerializeProtocol(protocol);
  for (const auto& [id, state] : native.blockStates) {
    message.intfs.emplace_back();
    ToMessage(id, message.intfs.back().zorid.emplace());
    message.intfs.back().state = OneOrZero(state);
  }
  return Outcome::kTrue;
}

Outcome ToMessage(const ZORL2InfoClientConfig& native, Client& message) {
  message = Client{};
  message.clientAddress = native.clientAddress;
  message.protocolType = SerializeProtocol(native.protocolType);
  Categories& categories = message.intfCategory.emplace();
  categories.l1 = categories.l2 = categories.vp = false;
  categories.l2_sub_if = categories.virtual_if = false;
  for (const InterfaceCategory category : native.interfaceCategories) {
    if (category == L1) categories.l1 = true;
    if (category == L2) categories.l2 = true;
    if (category == VP) categories.vp = true;
    if (category == L2_SUB_IF) categories.l2_sub_if = true;
    if (category == VIRTUAL_IF) categories.virtual_if = true;
    Unlisted(category, 4, "an element is no category");
  }
  message.token = native.token;
  return Outcome::kTrue;
}

Outcome ToMessage(const LagMemberOperation& native, Lag& message) {
  message = Lag{};
  ToMessage(native.lag, message.lag.emplace());
  ToMessage(native.member, message.member.emplace());
  message.token = native.token;
  message.collecting = native.collecting;
  message.distributing = native.distributing;
  return Outcome::kTrue;
}

}  // namespace oracle
