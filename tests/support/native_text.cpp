#include "tests/reliability/native_text.h"

#include "native/intf_entry_builder.h"

namespace proof {

namespace {

void Number(std::string& out, const char* name, std::uint64_t value) {
  ((out += name) += '=') += std::to_string(value) += ' ';
}

void Signed(std::string& out, const char* name, std::int32_t value) {
  ((out += name) += '=') += std::to_string(value) += ' ';
}

// With its length in front, so that no text can be mistaken for two.
void String(std::string& out, const char* name, const std::string& value) {
  (((out += name) += '=') += std::to_string(value.size())) += ':';
  for (const char c : value) {
    if (c >= ' ' && c <= '~') {
      out += c;
    } else {
      (out += '\\') += std::to_string(static_cast<unsigned char>(c));
    }
  }
  out += ' ';
}

}  // namespace

std::string Text(const zorid_t& id) {
  std::string out;
  for (const std::uint8_t octet : id.octets) (out += std::to_string(octet)) += '.';
  return out += ' ';
}

std::string Text(const IntfEntry::GeneralInfo& r) {
  std::string out;
  String(out, "intf_name", r.intf_name);
  String(out, "phy_addr", r.phy_addr);
  Number(out, "redundancy_group_id", r.redundancy_group_id);
  String(out, "redundancy_group_phy_addr", r.redundancy_group_phy_addr);
  Number(out, "bridge_port_number", r.bridge_port_number);
  return out;
}

std::string Text(const IntfEntry::StatusInfo& r) {
  std::string out;
  Signed(out, "adminStatus", r.adminStatus);
  Signed(out, "operationalStatus", r.operationalStatus);
  Signed(out, "linkStatus", r.linkStatus);
  Number(out, "operationalSpeed", r.operationalSpeed);
  Number(out, "extraShutdown", r.extraShutdown);
  Number(out, "extraBlocking", r.extraBlocking);
  Number(out, "configShutdown", r.configShutdown);
  return out;
}

std::string Text(const IntfEntry::PhysicalInfo& r) {
  std::string out;
  Number(out, "intf_mtu", r.intf_mtu);
  Signed(out, "eth_speed", r.eth_speed);
  Signed(out, "eth_duplex_mode", r.eth_duplex_mode);
  return out;
}

std::string Text(const IntfEntry::InterfaceFlags& r) {
  std::string out;
  Number(out, "if_l2_switching", r.if_l2_switching);
  Number(out, "if_in_bundle", r.if_in_bundle);
  Number(out, "l2_bundle", r.l2_bundle);
  Number(out, "l2_sub_if", r.l2_sub_if);
  Number(out, "point_to_point", r.point_to_point);
  Number(out, "if_multicast", r.if_multicast);
  return out;
}

std::string Text(const IntfEntry::TypeInfo& r) {
  std::string out;
  Signed(out, "interfaceType", r.interfaceType);
  out += Text(r.interfaceFlags);
  Signed(out, "vlanType", r.vlanType);
  return out;
}

std::string Text(const IntfEntry::BlockInfo& r) {
  std::string out;
  Signed(out, "protocol", r.protocol);
  Signed(out, "state", r.state);
  return out;
}

std::string Text(const oracle::EntryRecord& r) {
  std::string out = "id=" + Text(r.id) + "parent=" + Text(r.parent);
  out += Text(r.generalInfo);
  out += Text(r.statusInfo);
  out += Text(r.physicalInfo);
  out += Text(r.typeInfo);
  Signed(out, "interfaceCategory", r.interfaceCategory);
  for (const ProtocolType protocol : r.shutdownProtos) Signed(out, "shutdown", protocol);
  for (const IntfEntry::BlockInfo& block : r.blockInfo) (out += "block: ") += Text(block);
  return out;
}

std::string Text(const IntfEntry& r) { return Text(Open(r)); }

std::string Text(const ShutStateInfoSyncSignal& r) {
  std::string out;
  Signed(out, "protocol", r.protocol);
  for (const auto& [id, state] : r.shutStates) Number(out += Text(id), "shut", state);
  return out;
}

std::string Text(const BlockStateInfoSyncSignal& r) {
  std::string out;
  Signed(out, "protocol", r.protocol);
  for (const auto& [id, state] : r.blockStates) Signed(out += Text(id), "state", state);
  return out;
}

std::string Text(const ZORL2InfoClientConfig& r) {
  std::string out;
  Signed(out, "protocolType", r.protocolType);
  for (const InterfaceCategory category : r.interfaceCategories) Signed(out, "category", category);
  Number(out, "clientAddress", r.clientAddress);
  String(out, "token", r.token);
  return out;
}

std::string Text(const LagMemberOperation& r) {
  std::string out = "lag=" + Text(r.lag) + "member=" + Text(r.member);
  Number(out, "token", r.token);
  Number(out, "managerData", r.managerData);
  Number(out, "collecting", r.collecting);
  Number(out, "distributing", r.distributing);
  return out;
}

IntfEntry Build(const oracle::EntryRecord& r) {
  IntfEntryBuilder builder;
  builder.addZorId(r.id).addParent(r.parent).addGeneralInfo(r.generalInfo);
  builder.addStatusInfo(r.statusInfo).addPhysicalInfo(r.physicalInfo).addTypeInfo(r.typeInfo);
  for (const ProtocolType protocol : r.shutdownProtos) builder.addShutdownProto(protocol);
  for (const IntfEntry::BlockInfo& block : r.blockInfo) builder.addBlockInfo(block);
  return builder.setInterfaceCategory(r.interfaceCategory).Build();
}

oracle::EntryRecord Open(const IntfEntry& e) {
  return {e.getId(),           e.getParent(),   e.getGeneralInfo(),       e.getStatusInfo(),
          e.getPhysicalInfo(), e.getTypeInfo(), e.getInterfaceCategory(), e.getShutdownProtos(),
          e.getBlockInfo()};
}

}  // namespace proof
