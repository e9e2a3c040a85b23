// One interface entry as a message and as a record, both written by hand. Every field and every
// member has a value of its own that is not its default, so that a test notices a conversion that
// drops, defaults or swaps one of them.
#pragma once

#include <cstdint>

#include "interface_entry.pb.h"
#include "native/intf_entry.h"
#include "native/intf_entry_builder.h"
#include "tests/support/message_matchers.h"

namespace zorl2_test {

inline IntfEntry::GeneralInfo FullGeneralInfo() {
  return {"ge-0/0/7", "00:1b:21:3c:9d:f8", 90210, "02:00:5e:00:01:0a", 4107};
}

inline IntfEntry::StatusInfo FullStatusInfo() {
  return {
      IntfEntry::IF_ADMIN_DOWN, IntfEntry::DOWN, IntfEntry::LINK_DOWN, 2500000, true, true, true};
}

inline IntfEntry::PhysicalInfo FullPhysicalInfo() {
  return {9216, IntfEntry::SPEED_25_GBS, IntfEntry::FULL};
}

inline IntfEntry::TypeInfo FullTypeInfo() {
  return {IntfEntry::ETHERNET_BUNDLE, {true, true, true, true, true, true}, IntfEntry::B_VLAN};
}

inline IntfEntry FullEntry() {
  IntfEntryBuilder builder;
  builder.addZorId(zorid_t{{11, 22, 33, 44}})
      .addParent(zorid_t{{55, 66, 77, 188}})
      .addGeneralInfo(FullGeneralInfo())
      .addStatusInfo(FullStatusInfo())
      .addPhysicalInfo(FullPhysicalInfo())
      .addTypeInfo(FullTypeInfo())
      .addShutdownProto(LACP)
      .addShutdownProto(L1_PROTO)
      .addShutdownProto(LACP)
      .addBlockInfo({CFM, BLOCK_STATE_BLOCK})
      .addBlockInfo({L2_PROTO, BLOCK_STATE_FORWARD})
      .setInterfaceCategory(L2_SUB_IF);
  return builder.Build();
}

// A second entry that shares no value with the first, for destinations that must remain unchanged
// or be replaced completely.
inline IntfEntry OtherEntry() {
  IntfEntryBuilder builder;
  builder.addZorId(zorid_t{{201, 202, 203, 204}})
      .addParent(zorid_t{{211, 212, 213, 214}})
      .addGeneralInfo({"an interface name too long to be stored inside the string",
                       "another physical address too long for it", 17,
                       "another redundancy group address too long for it", 99})
      .addStatusInfo(
          {IntfEntry::IF_ADMIN_UP, IntfEntry::UP, IntfEntry::LINK_UP, 64, false, false, false})
      .addPhysicalInfo({4294968796U, IntfEntry::SPEED_1_TBS, IntfEntry::HALF})
      .addTypeInfo({IntfEntry::OTHER, {}, IntfEntry::C_VLAN})
      .addShutdownProto(EFM)
      .addShutdownProto(STP)
      .addShutdownProto(BACKUPLINK)
      .addBlockInfo({LBD, BLOCK_STATE_FORWARD})
      .addBlockInfo({ERPS, BLOCK_STATE_BLOCK})
      .setInterfaceCategory(VIRTUAL_IF);
  return builder.Build();
}

constexpr char kFullGeneralInfoText[] = R"pb(
  intf_name: "ge-0/0/7"
  phy_addr: "00:1b:21:3c:9d:f8"
  bridge_port_number: 4107
  redundancy_group_id: 90210
  redundancy_group_phy_addr: "02:00:5e:00:01:0a"
)pb";

constexpr char kFullStatusInfoText[] = R"pb(
  adminStatus: IF_ADMIN_DOWN
  operationalStatus: DOWN
  linkStatus: LINK_DOWN
  operationalSpeed: 2500000
  extraShutdown: true
  extraBlocking: true
  configShutdown: true
)pb";

constexpr char kFullPhysicalInfoText[] =
    R"pb(
  intf_mtu: 9216 eth_speed: SPEED_25_GBS eth_duplex_mode: FULL
    )pb";

constexpr char kFullInterfaceFlagsText[] = R"pb(
  if_l2_switching: true
  if_in_bundle: true
  l2_bundle: true
  l2_sub_if: true
  point_to_point: true
  if_multicast: true
)pb";

constexpr char kFullTypeInfoText[] = R"pb(
  interfaceType: ETHERNET_BUNDLE
  interfaceFlags {
    if_l2_switching: true
    if_in_bundle: true
    l2_bundle: true
    l2_sub_if: true
    point_to_point: true
    if_multicast: true
  }
  vlanType: B_VLAN
)pb";

// The same entry as FullEntry().
inline zorl2::protobuf::IntfEntry FullEntryMessage() {
  using zorl2::protobuf::GeneralInfo;
  using zorl2::protobuf::PhysicalInfo;
  using zorl2::protobuf::StatusInfo;
  using zorl2::protobuf::TypeInfo;
  auto message = FromText<zorl2::protobuf::IntfEntry>(R"pb(
    zorid { value: 11 value: 22 value: 33 value: 44 }
    parent { value: 55 value: 66 value: 77 value: 188 }
    shutdownProtos: LACP
    shutdownProtos: L1_PROTO
    shutdownProtos: LACP
    blockInfo { protocol: CFM state: BLOCK_STATE_BLOCK }
    blockInfo { protocol: L2_PROTO state: BLOCK_STATE_FORWARD }
    intfCategory: L2_SUB_IF
  )pb");
  *message.mutable_generalinfo() = FromText<GeneralInfo>(kFullGeneralInfoText);
  *message.mutable_statusinfo() = FromText<StatusInfo>(kFullStatusInfoText);
  *message.mutable_physicalinfo() = FromText<PhysicalInfo>(kFullPhysicalInfoText);
  *message.mutable_typeinfo() = FromText<TypeInfo>(kFullTypeInfoText);
  return message;
}

}  // namespace zorl2_test
