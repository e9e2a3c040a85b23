#include "tests/reliability/generate.h"

namespace proof {

void Generator::DrawDamage() {
  constexpr std::uint64_t kDamage[] = {0, 0, 0, 0, 10, 50, 300};
  missing_ = kDamage[Below(7)];
  foreign_ = kDamage[Below(7)];
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
  if (foreign_ != 0 && Below(1000) < foreign_) {
    const std::int32_t foreign[] = {-1, -2147483647 - 1, 2147483647, 256, last + 1, last + 2};
    return Chance(80) ? foreign[Below(6)] : static_cast<std::int32_t>(Number32());
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

}  // namespace proof
