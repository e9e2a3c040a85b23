#include "docs/native_members.h"

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <type_traits>
#include <utility>

#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"

namespace {

template <typename T>
struct Name;

#define TYPE_NAME(type, text)                  \
  template <>                                  \
  struct Name<type> {                          \
    static std::string Text() { return text; } \
  }
TYPE_NAME(bool, "bool");
TYPE_NAME(std::uint16_t, "uint16");
TYPE_NAME(std::uint32_t, "uint32");
TYPE_NAME(std::uint64_t, "uint64");
TYPE_NAME(std::uint8_t[4], "uint8[4]");
TYPE_NAME(std::string, "string");
TYPE_NAME(zorid_t, "zorid_t");
TYPE_NAME(ProtocolType, "ProtocolType");
TYPE_NAME(BlockState, "BlockState");
TYPE_NAME(InterfaceCategory, "InterfaceCategory");
TYPE_NAME(IntfEntry::AdminStatus, "IntfEntry::AdminStatus");
TYPE_NAME(IntfEntry::OperationalStatus, "IntfEntry::OperationalStatus");
TYPE_NAME(IntfEntry::LinkStatus, "IntfEntry::LinkStatus");
TYPE_NAME(IntfEntry::EthernetSpeed, "IntfEntry::EthernetSpeed");
TYPE_NAME(IntfEntry::EthernetDuplexMode, "IntfEntry::EthernetDuplexMode");
TYPE_NAME(IntfEntry::InterfaceType, "IntfEntry::InterfaceType");
TYPE_NAME(IntfEntry::VlanType, "IntfEntry::VlanType");
TYPE_NAME(IntfEntry::GeneralInfo, "IntfEntry::GeneralInfo");
TYPE_NAME(IntfEntry::StatusInfo, "IntfEntry::StatusInfo");
TYPE_NAME(IntfEntry::PhysicalInfo, "IntfEntry::PhysicalInfo");
TYPE_NAME(IntfEntry::TypeInfo, "IntfEntry::TypeInfo");
TYPE_NAME(IntfEntry::InterfaceFlags, "IntfEntry::InterfaceFlags");
TYPE_NAME(IntfEntry::BlockInfo, "IntfEntry::BlockInfo");
#undef TYPE_NAME

template <typename T>
struct Name<std::list<T>> {
  static std::string Text() { return "list of " + Name<T>::Text(); }
};
template <typename T>
struct Name<std::set<T>> {
  static std::string Text() { return "set of " + Name<T>::Text(); }
};
template <typename K, typename V>
struct Name<std::map<K, V>> {
  static std::string Text() { return "map of " + Name<K>::Text() + " to " + Name<V>::Text(); }
};

// A member, a getter, and a part of a container, each checked by the compiler.
#define MEMBER(field, record, name) \
  { field, #record "::" #name, Name<decltype(record::name)>::Text() }
#define GETTER(field, name)                                                         \
  {                                                                                 \
    field, "IntfEntry::" #name,                                                     \
        Name<std::decay_t<decltype(std::declval<const IntfEntry&>().name)>>::Text() \
  }
#define PART(field, part, record, name, type) \
  { field, part #record "::" #name, Name<decltype(record::name)::type>::Text() }

}  // namespace

const std::vector<NativeMember>& NativeMembers() {
  static const std::vector<NativeMember> members = {
      MEMBER("Zorid.value", zorid_t, octets),

      GETTER("IntfEntry.zorid", getId()),
      GETTER("IntfEntry.parent", getParent()),
      GETTER("IntfEntry.generalInfo", getGeneralInfo()),
      GETTER("IntfEntry.statusInfo", getStatusInfo()),
      GETTER("IntfEntry.physicalInfo", getPhysicalInfo()),
      GETTER("IntfEntry.typeInfo", getTypeInfo()),
      GETTER("IntfEntry.shutdownProtos", getShutdownProtos()),
      GETTER("IntfEntry.blockInfo", getBlockInfo()),
      GETTER("IntfEntry.intfCategory", getInterfaceCategory()),

      MEMBER("GeneralInfo.intf_name", IntfEntry::GeneralInfo, intf_name),
      MEMBER("GeneralInfo.phy_addr", IntfEntry::GeneralInfo, phy_addr),
      MEMBER("GeneralInfo.bridge_port_number", IntfEntry::GeneralInfo, bridge_port_number),
      MEMBER("GeneralInfo.redundancy_group_id", IntfEntry::GeneralInfo, redundancy_group_id),
      MEMBER("GeneralInfo.redundancy_group_phy_addr", IntfEntry::GeneralInfo,
             redundancy_group_phy_addr),

      MEMBER("StatusInfo.adminStatus", IntfEntry::StatusInfo, adminStatus),
      MEMBER("StatusInfo.operationalStatus", IntfEntry::StatusInfo, operationalStatus),
      MEMBER("StatusInfo.linkStatus", IntfEntry::StatusInfo, linkStatus),
      MEMBER("StatusInfo.operationalSpeed", IntfEntry::StatusInfo, operationalSpeed),
      MEMBER("StatusInfo.extraShutdown", IntfEntry::StatusInfo, extraShutdown),
      MEMBER("StatusInfo.extraBlocking", IntfEntry::StatusInfo, extraBlocking),
      MEMBER("StatusInfo.configShutdown", IntfEntry::StatusInfo, configShutdown),

      MEMBER("PhysicalInfo.intf_mtu", IntfEntry::PhysicalInfo, intf_mtu),
      MEMBER("PhysicalInfo.eth_speed", IntfEntry::PhysicalInfo, eth_speed),
      MEMBER("PhysicalInfo.eth_duplex_mode", IntfEntry::PhysicalInfo, eth_duplex_mode),

      MEMBER("TypeInfo.interfaceType", IntfEntry::TypeInfo, interfaceType),
      MEMBER("TypeInfo.interfaceFlags", IntfEntry::TypeInfo, interfaceFlags),
      MEMBER("TypeInfo.vlanType", IntfEntry::TypeInfo, vlanType),

      MEMBER("InterfaceFlags.if_l2_switching", IntfEntry::InterfaceFlags, if_l2_switching),
      MEMBER("InterfaceFlags.if_in_bundle", IntfEntry::InterfaceFlags, if_in_bundle),
      MEMBER("InterfaceFlags.l2_bundle", IntfEntry::InterfaceFlags, l2_bundle),
      MEMBER("InterfaceFlags.l2_sub_if", IntfEntry::InterfaceFlags, l2_sub_if),
      MEMBER("InterfaceFlags.point_to_point", IntfEntry::InterfaceFlags, point_to_point),
      MEMBER("InterfaceFlags.if_multicast", IntfEntry::InterfaceFlags, if_multicast),

      MEMBER("BlockInfo.protocol", IntfEntry::BlockInfo, protocol),
      MEMBER("BlockInfo.state", IntfEntry::BlockInfo, state),

      MEMBER("ShutStateSync.shutProtocol", ShutStateInfoSyncSignal, protocol),
      MEMBER("ShutStateSync.intfs", ShutStateInfoSyncSignal, shutStates),
      PART("ShutStateInfo.zorid", "key of ", ShutStateInfoSyncSignal, shutStates, key_type),
      PART("ShutStateInfo.state", "value of ", ShutStateInfoSyncSignal, shutStates, mapped_type),

      MEMBER("BlockStateSync.blockProtocol", BlockStateInfoSyncSignal, protocol),
      MEMBER("BlockStateSync.intfs", BlockStateInfoSyncSignal, blockStates),
      PART("BlockStateInfo.zorid", "key of ", BlockStateInfoSyncSignal, blockStates, key_type),
      PART("BlockStateInfo.state", "value of ", BlockStateInfoSyncSignal, blockStates, mapped_type),

      MEMBER("InformationClient.clientAddress", ZORL2InfoClientConfig, clientAddress),
      MEMBER("InformationClient.protocolType", ZORL2InfoClientConfig, protocolType),
      MEMBER("InformationClient.intfCategory", ZORL2InfoClientConfig, interfaceCategories),
      MEMBER("InformationClient.token", ZORL2InfoClientConfig, token),
      PART("IntfCategory.L1", "element of ", ZORL2InfoClientConfig, interfaceCategories, key_type),
      PART("IntfCategory.L2", "element of ", ZORL2InfoClientConfig, interfaceCategories, key_type),
      PART("IntfCategory.VP", "element of ", ZORL2InfoClientConfig, interfaceCategories, key_type),
      PART("IntfCategory.L2_SUB_IF", "element of ", ZORL2InfoClientConfig, interfaceCategories,
           key_type),
      PART("IntfCategory.VIRTUAL_IF", "element of ", ZORL2InfoClientConfig, interfaceCategories,
           key_type),

      MEMBER("LagMemberOperationProto.lag", LagMemberOperation, lag),
      MEMBER("LagMemberOperationProto.member", LagMemberOperation, member),
      MEMBER("LagMemberOperationProto.token", LagMemberOperation, token),
      MEMBER("LagMemberOperationProto.collecting", LagMemberOperation, collecting),
      MEMBER("LagMemberOperationProto.distributing", LagMemberOperation, distributing),
  };
  return members;
}
