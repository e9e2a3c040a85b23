#include "tests/reliability/wire.h"

namespace pb = zorl2::protobuf;

namespace proof {

oracle::Categories Read(const pb::IntfCategory& from) {
  oracle::Categories to;
  if (from.has_l1()) to.l1 = from.l1();
  if (from.has_l2()) to.l2 = from.l2();
  if (from.has_vp()) to.vp = from.vp();
  if (from.has_l2_sub_if()) to.l2_sub_if = from.l2_sub_if();
  if (from.has_virtual_if()) to.virtual_if = from.virtual_if();
  return to;
}

oracle::Zorid Read(const pb::Zorid& from) { return {{from.value().begin(), from.value().end()}}; }

oracle::General Read(const pb::GeneralInfo& from) {
  oracle::General to;
  if (from.has_intf_name()) to.intf_name = from.intf_name();
  if (from.has_phy_addr()) to.phy_addr = from.phy_addr();
  if (from.has_bridge_port_number()) to.bridge_port_number = from.bridge_port_number();
  if (from.has_redundancy_group_id()) to.redundancy_group_id = from.redundancy_group_id();
  if (from.has_redundancy_group_phy_addr())
    to.redundancy_group_phy_addr = from.redundancy_group_phy_addr();
  return to;
}

oracle::Status Read(const pb::StatusInfo& from) {
  oracle::Status to;
  if (from.has_adminstatus()) to.adminStatus = from.adminstatus();
  if (from.has_operationalstatus()) to.operationalStatus = from.operationalstatus();
  if (from.has_linkstatus()) to.linkStatus = from.linkstatus();
  if (from.has_operationalspeed()) to.operationalSpeed = from.operationalspeed();
  if (from.has_extrashutdown()) to.extraShutdown = from.extrashutdown();
  if (from.has_extrablocking()) to.extraBlocking = from.extrablocking();
  if (from.has_configshutdown()) to.configShutdown = from.configshutdown();
  return to;
}

oracle::Physical Read(const pb::PhysicalInfo& from) {
  oracle::Physical to;
  if (from.has_intf_mtu()) to.intf_mtu = from.intf_mtu();
  if (from.has_eth_speed()) to.eth_speed = from.eth_speed();
  if (from.has_eth_duplex_mode()) to.eth_duplex_mode = from.eth_duplex_mode();
  return to;
}

oracle::Flags Read(const pb::InterfaceFlags& from) {
  oracle::Flags to;
  if (from.has_if_l2_switching()) to.if_l2_switching = from.if_l2_switching();
  if (from.has_if_in_bundle()) to.if_in_bundle = from.if_in_bundle();
  if (from.has_l2_bundle()) to.l2_bundle = from.l2_bundle();
  if (from.has_l2_sub_if()) to.l2_sub_if = from.l2_sub_if();
  if (from.has_point_to_point()) to.point_to_point = from.point_to_point();
  if (from.has_if_multicast()) to.if_multicast = from.if_multicast();
  return to;
}

oracle::Type Read(const pb::TypeInfo& from) {
  oracle::Type to;
  if (from.has_interfacetype()) to.interfaceType = from.interfacetype();
  if (from.has_interfaceflags()) to.interfaceFlags = Read(from.interfaceflags());
  if (from.has_vlantype()) to.vlanType = from.vlantype();
  return to;
}

oracle::Block Read(const pb::BlockInfo& from) {
  oracle::Block to;
  if (from.has_protocol()) to.protocol = from.protocol();
  if (from.has_state()) to.state = from.state();
  return to;
}

oracle::Entry Read(const pb::IntfEntry& from) {
  oracle::Entry to;
  if (from.has_zorid()) to.zorid = Read(from.zorid());
  if (from.has_parent()) to.parent = Read(from.parent());
  if (from.has_generalinfo()) to.generalInfo = Read(from.generalinfo());
  if (from.has_statusinfo()) to.statusInfo = Read(from.statusinfo());
  if (from.has_physicalinfo()) to.physicalInfo = Read(from.physicalinfo());
  if (from.has_typeinfo()) to.typeInfo = Read(from.typeinfo());
  for (const int protocol : from.shutdownprotos()) to.shutdownProtos.push_back(protocol);
  for (const pb::BlockInfo& block : from.blockinfo()) to.blockInfo.push_back(Read(block));
  if (from.has_intfcategory()) to.intfCategory = from.intfcategory();
  return to;
}

oracle::Signal Read(const pb::ShutStateSync& from) {
  oracle::Signal to;
  if (from.has_shutprotocol()) to.protocol = from.shutprotocol();
  for (const pb::ShutStateInfo& info : from.intfs()) {
    oracle::State& state = to.intfs.emplace_back();
    if (info.has_zorid()) state.zorid = Read(info.zorid());
    if (info.has_state()) state.state = info.state();
  }
  return to;
}

oracle::Signal Read(const pb::BlockStateSync& from) {
  oracle::Signal to;
  if (from.has_blockprotocol()) to.protocol = from.blockprotocol();
  for (const pb::BlockStateInfo& info : from.intfs()) {
    oracle::State& state = to.intfs.emplace_back();
    if (info.has_zorid()) state.zorid = Read(info.zorid());
    if (info.has_state()) state.state = info.state();
  }
  return to;
}

oracle::Client Read(const pb::InformationClient& from) {
  oracle::Client to;
  if (from.has_clientaddress()) to.clientAddress = from.clientaddress();
  if (from.has_protocoltype()) to.protocolType = from.protocoltype();
  if (from.has_intfcategory()) to.intfCategory = Read(from.intfcategory());
  if (from.has_token()) to.token = from.token();
  return to;
}

oracle::Lag Read(const pb::LagMemberOperationProto& from) {
  oracle::Lag to;
  if (from.has_lag()) to.lag = Read(from.lag());
  if (from.has_member()) to.member = Read(from.member());
  if (from.has_token()) to.token = from.token();
  if (from.has_collecting()) to.collecting = from.collecting();
  if (from.has_distributing()) to.distributing = from.distributing();
  return to;
}

}  // namespace proof
