#include "docs/round_trips.h"

#include <google/protobuf/text_format.h>
#include <gtest/gtest.h>

#include "convert/enum_serialization.h"
#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "native/intf_entry_builder.h"

namespace pb = zorl2::protobuf;

namespace {

constexpr char kEntry[] = R"(
  zorid { value: [10, 20, 30, 40] }
  parent { value: [50, 60, 70, 80] }
  generalInfo { intf_name: "eth0/1" phy_addr: "02:00:00:00:00:01" bridge_port_number: 17
                redundancy_group_id: 23 redundancy_group_phy_addr: "02:00:00:00:00:02" }
  statusInfo { adminStatus: IF_ADMIN_DOWN operationalStatus: DOWN linkStatus: LINK_DOWN
               operationalSpeed: 10000000 extraShutdown: true extraBlocking: false
               configShutdown: true }
  physicalInfo { intf_mtu: 9000 eth_speed: SPEED_10_GBS eth_duplex_mode: FULL }
  typeInfo { interfaceType: ETHERNET_BUNDLE
             interfaceFlags { if_l2_switching: true if_in_bundle: false l2_bundle: true
                              l2_sub_if: false point_to_point: true if_multicast: false }
             vlanType: S_VLAN }
  shutdownProtos: LACP
  blockInfo { protocol: ERPS state: BLOCK_STATE_BLOCK }
  intfCategory: VP)";

template <typename Converter, typename Message, typename Native>
RoundTrip Through(const std::string& sample) {
  auto message = std::make_shared<Message>();
  EXPECT_TRUE(google::protobuf::TextFormat::ParseFromString(sample, message.get())) << sample;
  return {message, [](const google::protobuf::Message& in, google::protobuf::Message& out) {
            Converter converter;
            Native native;
            return converter.Convert(dynamic_cast<const Message&>(in), native) &&
                   converter.Convert(native, dynamic_cast<Message&>(out));
          }};
}

template <typename Message, typename Native>
EnumRoundTrip Through(const std::string& name,
                      bool (IntfEntryConvertHelperProtobuf::*to_native)(const Message&, Native&),
                      void (IntfEntryConvertHelperZOR::*to_message)(const Native&, Message&)) {
  return {name,
          [to_native](int number) {
            Native native;
            (IntfEntryConvertHelperProtobuf().*to_native)(static_cast<Message>(number), native);
            return static_cast<int>(native);
          },
          [to_message](int number) {
            Message message;
            (IntfEntryConvertHelperZOR().*to_message)(static_cast<Native>(number), message);
            return static_cast<int>(message);
          }};
}

pb::IntfEntry Entry() {
  pb::IntfEntry message;
  EXPECT_TRUE(google::protobuf::TextFormat::ParseFromString(kEntry, &message));
  return message;
}

int CategoryToNative(int number) {
  pb::IntfEntry message = Entry();
  message.set_intfcategory(static_cast<pb::InterfaceCategory>(number));
  IntfEntry entry;
  EXPECT_TRUE(IntfEntryConverter().Convert(message, entry));
  return entry.getInterfaceCategory();
}

int CategoryToMessage(int number) {
  const IntfEntry entry =
      IntfEntryBuilder().setInterfaceCategory(static_cast<InterfaceCategory>(number)).Build();
  pb::IntfEntry message;
  EXPECT_TRUE(IntfEntryConverter().Convert(entry, message));
  return message.intfcategory();
}

}  // namespace

const std::vector<RoundTrip>& RoundTrips() {
  static const std::vector<RoundTrip> round_trips = {
      Through<ZORIDConverter, pb::Zorid, zorid_t>("value: [10, 20, 30, 40]"),
      Through<IntfEntryConverter, pb::IntfEntry, IntfEntry>(kEntry),
      Through<ShutStateConverter, pb::ShutStateSync, ShutStateInfoSyncSignal>(
          "shutProtocol: STP intfs { zorid { value: [10, 20, 30, 40] } state: true }"),
      Through<BlockStateConverter, pb::BlockStateSync, BlockStateInfoSyncSignal>(
          "blockProtocol: CFM "
          "intfs { zorid { value: [10, 20, 30, 40] } state: BLOCK_STATE_BLOCK }"),
      Through<ZORL2InfoClientConfigConverter, pb::InformationClient, ZORL2InfoClientConfig>(
          "clientAddress: 77 protocolType: LBD token: 'secret' "
          "intfCategory { L1: true L2: false VP: true L2_SUB_IF: false VIRTUAL_IF: true }"),
      Through<LagMemberConverter, pb::LagMemberOperationProto, LagMemberOperation>(
          "lag { value: [1, 2, 3, 4] } member { value: [5, 6, 7, 8] } token: 99 "
          "collecting: true distributing: true"),
  };
  return round_trips;
}

const std::vector<EnumRoundTrip>& EnumRoundTrips() {
  using In = IntfEntryConvertHelperProtobuf;
  using Out = IntfEntryConvertHelperZOR;
  static const std::vector<EnumRoundTrip> round_trips = {
      Through("AdminStatus", &In::ConvertAdminStatus, &Out::ConvertAdminStatus),
      Through("OperationalStatus", &In::ConvertOperationalStatus, &Out::ConvertOperationalStatus),
      Through("LinkStatus", &In::ConvertLinkStatus, &Out::ConvertLinkStatus),
      Through("EthernetSpeed", &In::ConvertEthernetSpeed, &Out::ConvertEthernetSpeed),
      Through("EthernetDuplexMode", &In::ConvertDuplexMode, &Out::ConvertDuplexMode),
      Through("InterfaceType", &In::ConvertInterfaceType, &Out::ConvertInterfaceType),
      Through("VlanType", &In::ConvertVlanType, &Out::ConvertVlanType),
      {"ProtocolType",
       [](int n) { return int{DeserializeProtocolType(static_cast<pb::ProtocolType>(n))}; },
       [](int n) { return int{SerializeProtocolType(static_cast<ProtocolType>(n))}; }},
      {"BlockState",
       [](int n) { return int{DeserializeBlockState(static_cast<pb::BlockState>(n))}; },
       [](int n) { return int{SerializeBlockState(static_cast<BlockState>(n))}; }},
      {"InterfaceCategory", CategoryToNative, CategoryToMessage},
  };
  return round_trips;
}
