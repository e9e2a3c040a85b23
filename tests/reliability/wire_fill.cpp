#include "tests/reliability/wire.h"

namespace pb = zorl2::protobuf;

namespace proof {

void Fill(const oracle::Categories& from, pb::IntfCategory& to) {
  if (from.l1) to.set_l1(*from.l1);
  if (from.l2) to.set_l2(*from.l2);
  if (from.vp) to.set_vp(*from.vp);
  if (from.l2_sub_if) to.set_l2_sub_if(*from.l2_sub_if);
  if (from.virtual_if) to.set_virtual_if(*from.virtual_if);
}

void Fill(const oracle::Zorid& from, pb::Zorid& to) {
  for (const std::uint32_t value : from.value) to.add_value(value);
}

void Fill(const oracle::General& from, pb::GeneralInfo& to) {
  if (from.intf_name) to.set_intf_name(*from.intf_name);
  if (from.phy_addr) to.set_phy_addr(*from.phy_addr);
  if (from.bridge_port_number) to.set_bridge_port_number(*from.bridge_port_number);
  if (from.redundancy_group_id) to.set_redundancy_group_id(*from.redundancy_group_id);
  if (from.redundancy_group_phy_addr)
    to.set_redundancy_group_phy_addr(*from.redundancy_group_phy_addr);
}

void Fill(const oracle::Status& from, pb::StatusInfo& to) {
  if (from.adminStatus) to.set_adminstatus(static_cast<pb::AdminStatus>(*from.adminStatus));
  if (from.operationalStatus)
    to.set_operationalstatus(static_cast<pb::OperationalStatus>(*from.operationalStatus));
  if (from.linkStatus) to.set_linkstatus(static_cast<pb::LinkStatus>(*from.linkStatus));
  if (from.operationalSpeed) to.set_operationalspeed(*from.operationalSpeed);
  if (from.extraShutdown) to.set_extrashutdown(*from.extraShutdown);
  if (from.extraBlocking) to.set_extrablocking(*from.extraBlocking);
  if (from.configShutdown) to.set_configshutdown(*from.configShutdown);
}

void Fill(const oracle::Physical& from, pb::PhysicalInfo& to) {
  if (from.intf_mtu) to.set_intf_mtu(*from.intf_mtu);
  if (from.eth_speed) to.set_eth_speed(static_cast<pb::EthernetSpeed>(*from.eth_speed));
  if (from.eth_duplex_mode)
    to.set_eth_duplex_mode(static_cast<pb::EthernetDuplexMode>(*from.eth_duplex_mode));
}

void Fill(const oracle::Flags& from, pb::InterfaceFlags& to) {
  if (from.if_l2_switching) to.set_if_l2_switching(*from.if_l2_switching);
  if (from.if_in_bundle) to.set_if_in_bundle(*from.if_in_bundle);
  if (from.l2_bundle) to.set_l2_bundle(*from.l2_bundle);
  if (from.l2_sub_if) to.set_l2_sub_if(*from.l2_sub_if);
  if (from.point_to_point) to.set_point_to_point(*from.point_to_point);
  if (from.if_multicast) to.set_if_multicast(*from.if_multicast);
}

void Fill(const oracle::Type& from, pb::TypeInfo& to) {
  if (from.interfaceType) to.set_interfacetype(static_cast<pb::InterfaceType>(*from.interfaceType));
  if (from.interfaceFlags) Fill(*from.interfaceFlags, *to.mutable_interfaceflags());
  if (from.vlanType) to.set_vlantype(static_cast<pb::VlanType>(*from.vlanType));
}

void Fill(const oracle::Block& from, pb::BlockInfo& to) {
  if (from.protocol) to.set_protocol(static_cast<pb::ProtocolType>(*from.protocol));
  if (from.state) to.set_state(static_cast<pb::BlockState>(*from.state));
}

void Fill(const oracle::Entry& from, pb::IntfEntry& to) {
  if (from.zorid) Fill(*from.zorid, *to.mutable_zorid());
  if (from.parent) Fill(*from.parent, *to.mutable_parent());
  if (from.generalInfo) Fill(*from.generalInfo, *to.mutable_generalinfo());
  if (from.statusInfo) Fill(*from.statusInfo, *to.mutable_statusinfo());
  if (from.physicalInfo) Fill(*from.physicalInfo, *to.mutable_physicalinfo());
  if (from.typeInfo) Fill(*from.typeInfo, *to.mutable_typeinfo());
  for (const std::int32_t protocol : from.shutdownProtos) {
    to.add_shutdownprotos(static_cast<pb::ProtocolType>(protocol));
  }
  for (const oracle::Block& block : from.blockInfo) Fill(block, *to.add_blockinfo());
  if (from.intfCategory)
    to.set_intfcategory(static_cast<pb::InterfaceCategory>(*from.intfCategory));
}

void Fill(const oracle::Signal& from, pb::ShutStateSync& to) {
  if (from.protocol) to.set_shutprotocol(static_cast<pb::ProtocolType>(*from.protocol));
  for (const oracle::State& state : from.intfs) {
    pb::ShutStateInfo& info = *to.add_intfs();
    if (state.zorid) Fill(*state.zorid, *info.mutable_zorid());
    if (state.state) info.set_state(*state.state != 0);
  }
}

void Fill(const oracle::Signal& from, pb::BlockStateSync& to) {
  if (from.protocol) to.set_blockprotocol(static_cast<pb::ProtocolType>(*from.protocol));
  for (const oracle::State& state : from.intfs) {
    pb::BlockStateInfo& info = *to.add_intfs();
    if (state.zorid) Fill(*state.zorid, *info.mutable_zorid());
    if (state.state) info.set_state(static_cast<pb::BlockState>(*state.state));
  }
}

void Fill(const oracle::Client& from, pb::InformationClient& to) {
  if (from.clientAddress) to.set_clientaddress(*from.clientAddress);
  if (from.protocolType) to.set_protocoltype(static_cast<pb::ProtocolType>(*from.protocolType));
  if (from.intfCategory) Fill(*from.intfCategory, *to.mutable_intfcategory());
  if (from.token) to.set_token(*from.token);
}

void Fill(const oracle::Lag& from, pb::LagMemberOperationProto& to) {
  if (from.lag) Fill(*from.lag, *to.mutable_lag());
  if (from.member) Fill(*from.member, *to.mutable_member());
  if (from.token) to.set_token(*from.token);
  if (from.collecting) to.set_collecting(*from.collecting);
  if (from.distributing) to.set_distributing(*from.distributing);
}

}  // namespace proof
