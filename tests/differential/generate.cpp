#include "tests/differential/generate.h"

namespace proof {

void Generator::DrawDamage() {
  constexpr std::uint64_t kDamage[] = {0, 0, 0, 0, 10, 50, 300};
  missing_ = kDamage[Below(7)];
  unlisted_ = kDamage[Below(7)];
}

std::uint64_t Generator::Number64() {
  constexpr std::uint64_t kEdges[] = {
      0,          1,          2,          3,          127,         128,
      255,        256,        300,        511,        65535,       65536,
      70000,      2147483647, 2147483648, 4294967295, 4294967296,  4294968796,
      1410065408, 1000000000, 1ULL << 63, ~0ULL,      ~0ULL - 255, 0x0102030405060708,
  };
  if (Chance(50)) return kEdges[Below(std::size(kEdges))];
  return random_() >> Below(64);
}

std::int32_t Generator::Enumeration(std::int32_t last) {
  if (unlisted_ != 0 && Below(1000) < unlisted_) {
    const std::int32_t unlisted[] = {-1, -2147483647 - 1, 2147483647, 256, last + 1, last + 2};
    return Chance(80) ? unlisted[Below(6)] : static_cast<std::int32_t>(Number32());
  }
  return static_cast<std::int32_t>(Below(static_cast<std::uint64_t>(last) + 1));
}

std::string Generator::Text() {
  std::string text(Chance(5) ? Below(300) : Below(24), '\0');
  for (char& c : text) c = static_cast<char>(Chance(90) ? 'a' + Below(26) : Below(256));
  return text;
}

std::size_t Generator::Length() { return Chance(3) ? Below(40) : Below(5); }

oracle::Zorid Generator::Zorid() {
  oracle::Zorid zorid;
  zorid.value.resize(missing_ != 0 && Chance(10) ? Below(7) : 4);
  // Few identifiers, so that some of them meet.
  for (std::uint32_t& value : zorid.value) {
    value = Chance(80) ? static_cast<std::uint32_t>(Below(2) * 128) : Number32();
  }
  return zorid;
}

oracle::General Generator::General() {
  oracle::General m;
  if (!Missing()) m.intf_name = Text();
  if (!Missing()) m.phy_addr = Text();
  if (Chance(80)) m.bridge_port_number = Number32();
  if (!Missing()) m.redundancy_group_id = Number32();
  if (!Missing()) m.redundancy_group_phy_addr = Text();
  return m;
}

oracle::Status Generator::Status() {
  oracle::Status m;
  if (!Missing()) m.adminStatus = Enumeration(1);
  if (!Missing()) m.operationalStatus = Enumeration(1);
  if (!Missing()) m.linkStatus = Enumeration(1);
  if (!Missing()) m.operationalSpeed = Number32();
  if (!Missing()) m.extraShutdown = Flag();
  if (!Missing()) m.extraBlocking = Flag();
  if (!Missing()) m.configShutdown = Flag();
  return m;
}

oracle::Physical Generator::Physical() {
  oracle::Physical m;
  if (!Missing()) m.intf_mtu = Number32();
  if (!Missing()) m.eth_speed = Enumeration(11);
  if (!Missing()) m.eth_duplex_mode = Enumeration(2);
  return m;
}

oracle::Flags Generator::Flags() {
  oracle::Flags m;
  if (!Missing()) m.if_l2_switching = Flag();
  if (!Missing()) m.if_in_bundle = Flag();
  if (!Missing()) m.l2_bundle = Flag();
  if (!Missing()) m.l2_sub_if = Flag();
  if (!Missing()) m.point_to_point = Flag();
  if (!Missing()) m.if_multicast = Flag();
  return m;
}

oracle::Type Generator::Type() {
  oracle::Type m;
  if (!Missing()) m.interfaceType = Enumeration(4);
  if (!Missing()) m.interfaceFlags = Flags();
  if (!Missing()) m.vlanType = Enumeration(4);
  return m;
}

oracle::Block Generator::Block() {
  oracle::Block m;
  if (!Missing()) m.protocol = Enumeration(12);
  if (!Missing()) m.state = Enumeration(1);
  return m;
}

oracle::Entry Generator::Entry() {
  oracle::Entry m;
  if (!Missing()) m.zorid = Zorid();
  if (Chance(70)) m.parent = Zorid();
  if (!Missing()) m.generalInfo = General();
  if (!Missing()) m.statusInfo = Status();
  if (!Missing()) m.physicalInfo = Physical();
  if (!Missing()) m.typeInfo = Type();
  for (std::size_t i = Length(); i > 0; --i) m.shutdownProtos.push_back(Enumeration(12));
  for (std::size_t i = Length(); i > 0; --i) m.blockInfo.push_back(Block());
  if (!Missing()) m.intfCategory = Enumeration(4);
  return m;
}

oracle::Signal Generator::Signal(bool shut) {
  oracle::Signal m;
  if (!Missing()) m.protocol = Enumeration(12);
  for (std::size_t i = Length(); i > 0; --i) {
    oracle::State& state = m.intfs.emplace_back();
    if (!Missing()) state.zorid = Zorid();
    if (!Missing()) state.state = shut ? static_cast<std::int32_t>(Below(2)) : Enumeration(1);
  }
  return m;
}

oracle::Signal Generator::ShutSignal() { return Signal(true); }

oracle::Signal Generator::BlockSignal() { return Signal(false); }

oracle::Client Generator::Client() {
  oracle::Client m;
  if (!Missing()) m.clientAddress = Number64();
  if (!Missing()) m.protocolType = Enumeration(12);
  if (!Missing()) {
    oracle::Categories& categories = m.intfCategory.emplace();
    if (!Missing()) categories.l1 = Flag();
    if (!Missing()) categories.l2 = Flag();
    if (!Missing()) categories.vp = Flag();
    if (!Missing()) categories.l2_sub_if = Flag();
    if (!Missing()) categories.virtual_if = Flag();
  }
  if (!Missing()) m.token = Text();
  return m;
}

oracle::Lag Generator::Lag() {
  oracle::Lag m;
  if (!Missing()) m.lag = Zorid();
  if (!Missing()) m.member = Zorid();
  if (Chance(70)) m.token = Number64();
  if (Chance(70)) m.collecting = Flag();
  if (Chance(70)) m.distributing = Flag();
  return m;
}

zorid_t Generator::NativeZorid() {
  zorid_t id;
  for (std::uint8_t& octet : id.octets) {
    octet = static_cast<std::uint8_t>(Chance(80) ? Below(2) * 128 : Below(256));
  }
  return id;
}

IntfEntry::GeneralInfo Generator::NativeGeneral() {
  IntfEntry::GeneralInfo r;
  r.intf_name = Text();
  r.phy_addr = Text();
  r.bridge_port_number = static_cast<std::uint16_t>(Number32());
  r.redundancy_group_id = Number32();
  r.redundancy_group_phy_addr = Text();
  return r;
}

IntfEntry::StatusInfo Generator::NativeStatus() {
  IntfEntry::StatusInfo r;
  r.adminStatus = static_cast<IntfEntry::AdminStatus>(Enumeration(1));
  r.operationalStatus = static_cast<IntfEntry::OperationalStatus>(Enumeration(1));
  r.linkStatus = static_cast<IntfEntry::LinkStatus>(Enumeration(1));
  r.operationalSpeed = Number32();
  r.extraShutdown = Flag();
  r.extraBlocking = Flag();
  r.configShutdown = Flag();
  return r;
}

IntfEntry::PhysicalInfo Generator::NativePhysical() {
  IntfEntry::PhysicalInfo r;
  r.intf_mtu = Number64();
  r.eth_speed = static_cast<IntfEntry::EthernetSpeed>(Enumeration(11));
  r.eth_duplex_mode = static_cast<IntfEntry::EthernetDuplexMode>(Enumeration(2));
  return r;
}

IntfEntry::InterfaceFlags Generator::NativeFlags() {
  IntfEntry::InterfaceFlags r;
  r.if_l2_switching = Flag();
  r.if_in_bundle = Flag();
  r.l2_bundle = Flag();
  r.l2_sub_if = Flag();
  r.point_to_point = Flag();
  r.if_multicast = Flag();
  return r;
}

IntfEntry::TypeInfo Generator::NativeType() {
  IntfEntry::TypeInfo r;
  r.interfaceType = static_cast<IntfEntry::InterfaceType>(Enumeration(4));
  r.interfaceFlags = NativeFlags();
  r.vlanType = static_cast<IntfEntry::VlanType>(Enumeration(4));
  return r;
}

IntfEntry::BlockInfo Generator::NativeBlock() {
  IntfEntry::BlockInfo r;
  r.protocol = static_cast<ProtocolType>(Enumeration(12));
  r.state = static_cast<BlockState>(Enumeration(1));
  return r;
}

oracle::EntryRecord Generator::NativeEntry() {
  oracle::EntryRecord r;
  r.id = NativeZorid();
  r.parent = NativeZorid();
  r.generalInfo = NativeGeneral();
  r.statusInfo = NativeStatus();
  r.physicalInfo = NativePhysical();
  r.typeInfo = NativeType();
  r.interfaceCategory = static_cast<InterfaceCategory>(Enumeration(4));
  for (std::size_t i = Length(); i > 0; --i) {
    r.shutdownProtos.push_back(static_cast<ProtocolType>(Enumeration(12)));
  }
  for (std::size_t i = Length(); i > 0; --i) r.blockInfo.push_back(NativeBlock());
  return r;
}

ShutStateInfoSyncSignal Generator::NativeShut() {
  ShutStateInfoSyncSignal r;
  r.protocol = static_cast<ProtocolType>(Enumeration(12));
  for (std::size_t i = Length(); i > 0; --i) r.shutStates[NativeZorid()] = Flag();
  return r;
}

BlockStateInfoSyncSignal Generator::NativeBlockSignal() {
  BlockStateInfoSyncSignal r;
  r.protocol = static_cast<ProtocolType>(Enumeration(12));
  for (std::size_t i = Length(); i > 0; --i) {
    r.blockStates[NativeZorid()] = static_cast<BlockState>(Enumeration(1));
  }
  return r;
}

ZORL2InfoClientConfig Generator::NativeClient() {
  ZORL2InfoClientConfig r;
  r.protocolType = static_cast<ProtocolType>(Enumeration(12));
  for (std::size_t i = Length(); i > 0; --i) {
    r.interfaceCategories.insert(static_cast<InterfaceCategory>(Enumeration(4)));
  }
  r.clientAddress = Number64();
  r.token = Text();
  return r;
}

LagMemberOperation Generator::NativeLag() {
  LagMemberOperation r;
  r.lag = NativeZorid();
  r.member = NativeZorid();
  r.token = Number64();
  r.managerData = Number32();
  r.collecting = Flag();
  r.distributing = Flag();
  return r;
}

}  // namespace proof
