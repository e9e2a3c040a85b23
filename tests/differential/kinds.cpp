#include "tests/differential/kinds.h"

namespace proof {

namespace {

// Adds the kind if the condition holds.
struct Adder {
  Kinds& kinds;
  void operator()(const std::string& kind, bool condition) const {
    if (condition) kinds.insert(kind);
  }
  void Include(const Kinds& others) const { kinds.insert(others.begin(), others.end()); }
};

// An absent value counts as missing, not as unlisted.
bool Unlisted(const std::optional<std::int32_t>& value, std::int32_t last) {
  return value && (*value < 0 || *value > last);
}

constexpr char kMissing[] = "a required field is missing";
constexpr char kCount[] = "an identifier has a wrong count";
constexpr char kOctet[] = "a value of an identifier is above 255";
constexpr char kProtocol[] = "unlisted protocol";
constexpr char kState[] = "unlisted block state";

void AddIdentifier(const std::optional<oracle::Zorid>& zorid, const Adder& add) {
  if (zorid) add.Include(KindsOf(*zorid));
}

}  // namespace

Kinds KindsOf(const oracle::Zorid& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kCount, m.value.size() != 4);
  for (const std::uint32_t value : m.value) add(kOctet, value > 255);
  return kinds;
}

Kinds KindsOf(const oracle::General& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing,
      !m.intf_name || !m.phy_addr || !m.redundancy_group_id || !m.redundancy_group_phy_addr);
  add("no bridge port number", !m.bridge_port_number);
  add("bridge port number above 65535", m.bridge_port_number && *m.bridge_port_number > 65535);
  return kinds;
}

Kinds KindsOf(const oracle::Status& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing, !m.adminStatus || !m.operationalStatus || !m.linkStatus || !m.operationalSpeed ||
                    !m.extraShutdown || !m.extraBlocking || !m.configShutdown);
  add("unlisted administrative status", Unlisted(m.adminStatus, 1));
  add("unlisted operational status", Unlisted(m.operationalStatus, 1));
  add("unlisted link status", Unlisted(m.linkStatus, 1));
  return kinds;
}

Kinds KindsOf(const oracle::Physical& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing, !m.intf_mtu || !m.eth_speed || !m.eth_duplex_mode);
  add("unlisted speed", Unlisted(m.eth_speed, 11));
  add("unlisted duplex mode", Unlisted(m.eth_duplex_mode, 2));
  return kinds;
}

Kinds KindsOf(const oracle::Flags& m) {
  Kinds kinds;
  Adder{kinds}(kMissing, !m.if_l2_switching || !m.if_in_bundle || !m.l2_bundle || !m.l2_sub_if ||
                             !m.point_to_point || !m.if_multicast);
  return kinds;
}

Kinds KindsOf(const oracle::Type& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing, !m.interfaceType || !m.interfaceFlags || !m.vlanType);
  if (m.interfaceFlags) add.Include(KindsOf(*m.interfaceFlags));
  add("unlisted interface type", Unlisted(m.interfaceType, 4));
  add("unlisted VLAN type", Unlisted(m.vlanType, 4));
  return kinds;
}

Kinds KindsOf(const oracle::Block& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing, !m.protocol || !m.state);
  add(kProtocol, Unlisted(m.protocol, 12));
  add(kState, Unlisted(m.state, 1));
  return kinds;
}

Kinds KindsOf(const oracle::Entry& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing, !Complete(m));
  add("no parent", !m.parent);
  AddIdentifier(m.zorid, add);
  AddIdentifier(m.parent, add);
  if (m.generalInfo) add.Include(KindsOf(*m.generalInfo));
  if (m.statusInfo) add.Include(KindsOf(*m.statusInfo));
  if (m.physicalInfo) add.Include(KindsOf(*m.physicalInfo));
  if (m.typeInfo) add.Include(KindsOf(*m.typeInfo));
  for (const std::int32_t protocol : m.shutdownProtos) add(kProtocol, Unlisted(protocol, 12));
  for (const oracle::Block& block : m.blockInfo) add.Include(KindsOf(block));
  add("unlisted category", Unlisted(m.intfCategory, 4));
  return kinds;
}

Kinds KindsOf(const oracle::Signal& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing, !Complete(m));
  add("L1_PROTO or L2_PROTO", m.protocol && (*m.protocol == 10 || *m.protocol == 11));
  add(kProtocol, Unlisted(m.protocol, 12));
  add("no element", m.intfs.empty());
  std::set<std::vector<std::uint32_t>> seen;
  for (const oracle::State& state : m.intfs) {
    AddIdentifier(state.zorid, add);
    add(kState, Unlisted(state.state, 1));
    if (state.zorid) add("an interface is named twice", !seen.insert(state.zorid->value).second);
  }
  return kinds;
}

Kinds KindsOf(const oracle::Client& m) {
  Kinds kinds;
  const Adder add{kinds};
  add(kMissing, !Complete(m));
  add(kProtocol, Unlisted(m.protocolType, 12));
  add("L1_PROTO or L2_PROTO", m.protocolType && (*m.protocolType == 10 || *m.protocolType == 11));
  return kinds;
}

Kinds KindsOf(const oracle::Lag& m) {
  Kinds kinds;
  const Adder add{kinds};
  add("no lag", !m.lag);
  add("no member", !m.member);
  AddIdentifier(m.lag, add);
  AddIdentifier(m.member, add);
  add("no token", !m.token);
  add("no collecting", !m.collecting);
  add("no distributing", !m.distributing);
  return kinds;
}

Kinds KindsOf(const zorid_t&) { return {}; }

Kinds KindsOf(const IntfEntry::GeneralInfo&) { return {}; }

Kinds KindsOf(const IntfEntry::StatusInfo& r) {
  Kinds kinds;
  const Adder add{kinds};
  add("unlisted administrative status", Unlisted(r.adminStatus, 1));
  add("unlisted operational status", Unlisted(r.operationalStatus, 1));
  add("unlisted link status", Unlisted(r.linkStatus, 1));
  return kinds;
}

Kinds KindsOf(const IntfEntry::PhysicalInfo& r) {
  Kinds kinds;
  const Adder add{kinds};
  add("MTU above 32 bits", r.intf_mtu > 0xFFFFFFFF);
  add("unlisted speed", Unlisted(r.eth_speed, 11));
  add("unlisted duplex mode", Unlisted(r.eth_duplex_mode, 2));
  return kinds;
}

Kinds KindsOf(const IntfEntry::InterfaceFlags&) { return {}; }

Kinds KindsOf(const IntfEntry::TypeInfo& r) {
  Kinds kinds;
  const Adder add{kinds};
  add("unlisted interface type", Unlisted(r.interfaceType, 4));
  add("unlisted VLAN type", Unlisted(r.vlanType, 4));
  return kinds;
}

Kinds KindsOf(const IntfEntry::BlockInfo& r) {
  Kinds kinds;
  const Adder add{kinds};
  add(kProtocol, Unlisted(r.protocol, 12));
  add(kState, Unlisted(r.state, 1));
  return kinds;
}

Kinds KindsOf(const oracle::EntryRecord& r) {
  Kinds kinds;
  const Adder add{kinds};
  add.Include(KindsOf(r.statusInfo));
  add.Include(KindsOf(r.physicalInfo));
  add.Include(KindsOf(r.typeInfo));
  for (const ProtocolType protocol : r.shutdownProtos) add(kProtocol, Unlisted(protocol, 12));
  for (const IntfEntry::BlockInfo& block : r.blockInfo) add.Include(KindsOf(block));
  add("unlisted category", Unlisted(r.interfaceCategory, 4));
  return kinds;
}

namespace {

template <typename Signal, typename States>
Kinds KindsOfSignal(const Signal& r, const States& states) {
  Kinds kinds;
  const Adder add{kinds};
  add("L1_PROTO or L2_PROTO", r.protocol == L1_PROTO || r.protocol == L2_PROTO);
  add(kProtocol, Unlisted(r.protocol, 12));
  add("no element", states.empty());
  for (const auto& [id, state] : states) add(kState, Unlisted(state, 1));
  return kinds;
}

}  // namespace

Kinds KindsOf(const ShutStateInfoSyncSignal& r) { return KindsOfSignal(r, r.shutStates); }

Kinds KindsOf(const BlockStateInfoSyncSignal& r) { return KindsOfSignal(r, r.blockStates); }

Kinds KindsOf(const ZORL2InfoClientConfig& r) {
  Kinds kinds;
  const Adder add{kinds};
  add(kProtocol, Unlisted(r.protocolType, 12));
  add("L1_PROTO or L2_PROTO", r.protocolType == L1_PROTO || r.protocolType == L2_PROTO);
  for (const InterfaceCategory category : r.interfaceCategories) {
    add("an element is no category", Unlisted(category, 4));
  }
  return kinds;
}

Kinds KindsOf(const LagMemberOperation&) { return {}; }

}  // namespace proof
