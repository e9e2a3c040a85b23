#include "convert/intf_entry_convert_helper_protobuf.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

using zorl2_test::EqualsNative;
using zorl2_test::FromText;
using zorl2_test::OtherEntry;

namespace {

using Helper = IntfEntryConvertHelperProtobuf;

TEST(HelperProtobuf, EveryFieldLandsInTheMemberOfItsName) {
  Helper helper;
  IntfEntry::GeneralInfo general = OtherEntry().getGeneralInfo();
  EXPECT_TRUE(helper.ConvertGeneralInfo(FromText<pb::GeneralInfo>(zorl2_test::kFullGeneralInfoText),
                                        general));
  EXPECT_THAT(general, EqualsNative(zorl2_test::FullGeneralInfo()));
  IntfEntry::StatusInfo status = OtherEntry().getStatusInfo();
  EXPECT_TRUE(
      helper.ConvertStatusInfo(FromText<pb::StatusInfo>(zorl2_test::kFullStatusInfoText), status));
  EXPECT_THAT(status, EqualsNative(zorl2_test::FullStatusInfo()));
  IntfEntry::PhysicalInfo physical = OtherEntry().getPhysicalInfo();
  EXPECT_TRUE(helper.ConvertPhysicalInfo(
      FromText<pb::PhysicalInfo>(zorl2_test::kFullPhysicalInfoText), physical));
  EXPECT_THAT(physical, EqualsNative(zorl2_test::FullPhysicalInfo()));
  IntfEntry::TypeInfo type = OtherEntry().getTypeInfo();
  EXPECT_TRUE(helper.ConvertTypeInfo(FromText<pb::TypeInfo>(zorl2_test::kFullTypeInfoText), type));
  EXPECT_THAT(type, EqualsNative(zorl2_test::FullTypeInfo()));
  IntfEntry::BlockInfo block;
  EXPECT_TRUE(helper.ConvertBlockInfo(
      FromText<pb::BlockInfo>("protocol: CFM state: BLOCK_STATE_BLOCK"), block));
  EXPECT_THAT(block, EqualsNative(IntfEntry::BlockInfo{CFM, BLOCK_STATE_BLOCK}));
}

// Each required field taken away: false, and a record that is as it was.
template <typename Proto, typename Record>
void ExpectEachFieldIsNeeded(bool (Helper::*convert)(const Proto&, Record&), const Proto& full,
                             const Record& before, std::size_t required) {
  EXPECT_TRUE(full.IsInitialized());
  const auto paths = zorl2_test::RequiredFields(full);
  EXPECT_EQ(paths.size(), required) << full.GetTypeName();
  for (const auto& path : paths) {
    Proto message = full;
    zorl2_test::RemoveField(path, message);
    Record record = before;
    Helper helper;
    EXPECT_FALSE((helper.*convert)(message, record)) << path.Name();
    EXPECT_THAT(record, EqualsNative(before)) << path.Name();
  }
}

TEST(HelperProtobuf, WithoutARequiredFieldNothingIsWritten) {
  const IntfEntry before = OtherEntry();
  ExpectEachFieldIsNeeded(&Helper::ConvertGeneralInfo,
                          FromText<pb::GeneralInfo>(zorl2_test::kFullGeneralInfoText),
                          before.getGeneralInfo(), 4);
  ExpectEachFieldIsNeeded(&Helper::ConvertStatusInfo,
                          FromText<pb::StatusInfo>(zorl2_test::kFullStatusInfoText),
                          before.getStatusInfo(), 7);
  ExpectEachFieldIsNeeded(&Helper::ConvertPhysicalInfo,
                          FromText<pb::PhysicalInfo>(zorl2_test::kFullPhysicalInfoText),
                          before.getPhysicalInfo(), 3);
  ExpectEachFieldIsNeeded(&Helper::ConvertInterfaceFlags,
                          FromText<pb::InterfaceFlags>(zorl2_test::kFullInterfaceFlagsText),
                          IntfEntry::InterfaceFlags{}, 6);
  ExpectEachFieldIsNeeded(&Helper::ConvertTypeInfo,
                          FromText<pb::TypeInfo>(zorl2_test::kFullTypeInfoText),
                          before.getTypeInfo(), 9);
  ExpectEachFieldIsNeeded(&Helper::ConvertBlockInfo,
                          FromText<pb::BlockInfo>("protocol: CFM state: BLOCK_STATE_BLOCK"),
                          before.getBlockInfo().front(), 2);
}

IntfEntry::InterfaceFlags OnlyFlag(const std::string& name) {
  IntfEntry::InterfaceFlags flags;
  if (name == "if_l2_switching") flags.if_l2_switching = true;
  if (name == "if_in_bundle") flags.if_in_bundle = true;
  if (name == "l2_bundle") flags.l2_bundle = true;
  if (name == "l2_sub_if") flags.l2_sub_if = true;
  if (name == "point_to_point") flags.point_to_point = true;
  if (name == "if_multicast") flags.if_multicast = true;
  return flags;
}

TEST(HelperProtobuf, EachFlagAloneLandsInItsOwnMemberAndNoOther) {
  for (const char* name : {"if_l2_switching", "if_in_bundle", "l2_bundle", "l2_sub_if",
                           "point_to_point", "if_multicast"}) {
    auto message = FromText<pb::InterfaceFlags>(
        "if_l2_switching: false if_in_bundle: false l2_bundle: false "
        "l2_sub_if: false point_to_point: false if_multicast: false");
    message.GetReflection()->SetBool(&message, message.GetDescriptor()->FindFieldByName(name),
                                     true);
    IntfEntry::InterfaceFlags flags = {true, true, true, true, true, true};
    Helper helper;
    EXPECT_TRUE(helper.ConvertInterfaceFlags(message, flags));
    EXPECT_THAT(flags, EqualsNative(OnlyFlag(name))) << name;
    auto type = FromText<pb::TypeInfo>(zorl2_test::kFullTypeInfoText);
    *type.mutable_interfaceflags() = message;
    IntfEntry::TypeInfo native;
    EXPECT_TRUE(helper.ConvertTypeInfo(type, native));
    EXPECT_THAT(native.interfaceFlags, EqualsNative(OnlyFlag(name))) << name;
  }
}

TEST(HelperProtobuf, EachStatusFlagAloneLandsInItsOwnMemberAndNoOther) {
  for (const char* name : {"extraShutdown", "extraBlocking", "configShutdown"}) {
    auto message = FromText<pb::StatusInfo>(
        "adminStatus: IF_ADMIN_UP operationalStatus: UP linkStatus: LINK_UP operationalSpeed: 0 "
        "extraShutdown: false extraBlocking: false configShutdown: false");
    message.GetReflection()->SetBool(&message, message.GetDescriptor()->FindFieldByName(name),
                                     true);
    IntfEntry::StatusInfo status = zorl2_test::FullStatusInfo();
    Helper helper;
    EXPECT_TRUE(helper.ConvertStatusInfo(message, status));
    EXPECT_EQ(status.extraShutdown, name == std::string("extraShutdown"));
    EXPECT_EQ(status.extraBlocking, name == std::string("extraBlocking"));
    EXPECT_EQ(status.configShutdown, name == std::string("configShutdown"));
  }
}

// Three enumerations of two members each: one at a time, so that none is taken for another.
TEST(HelperProtobuf, EachOfTheThreeStatesAloneLandsInItsOwnMember) {
  const auto zero = FromText<pb::StatusInfo>(
      "adminStatus: IF_ADMIN_UP operationalStatus: UP linkStatus: LINK_UP operationalSpeed: 0 "
      "extraShutdown: false extraBlocking: false configShutdown: false");
  Helper helper;
  IntfEntry::StatusInfo status;
  pb::StatusInfo message = zero;
  message.set_adminstatus(pb::IF_ADMIN_DOWN);
  EXPECT_TRUE(helper.ConvertStatusInfo(message, status));
  EXPECT_THAT(status, EqualsNative(IntfEntry::StatusInfo{IntfEntry::IF_ADMIN_DOWN}));
  message = zero;
  message.set_operationalstatus(pb::DOWN);
  EXPECT_TRUE(helper.ConvertStatusInfo(message, status));
  EXPECT_THAT(status, EqualsNative(IntfEntry::StatusInfo{IntfEntry::IF_ADMIN_UP, IntfEntry::DOWN}));
  message = zero;
  message.set_linkstatus(pb::LINK_DOWN);
  EXPECT_TRUE(helper.ConvertStatusInfo(message, status));
  EXPECT_THAT(status, EqualsNative(IntfEntry::StatusInfo{IntfEntry::IF_ADMIN_UP, IntfEntry::UP,
                                                         IntfEntry::LINK_DOWN}));
}

TEST(HelperProtobuf, TheBridgePortNumberKeepsItsLow16Bits) {
  const std::pair<std::uint32_t, std::uint16_t> cases[] = {
      {0, 0},        {65535, 65535},       {65536, 0},
      {70000, 4464}, {0x12345678, 0x5678}, {std::numeric_limits<std::uint32_t>::max(), 65535}};
  for (const auto& [wire, kept] : cases) {
    auto message = FromText<pb::GeneralInfo>(zorl2_test::kFullGeneralInfoText);
    message.set_bridge_port_number(wire);
    IntfEntry::GeneralInfo general;
    general.bridge_port_number = 1;
    Helper helper;
    EXPECT_TRUE(helper.ConvertGeneralInfo(message, general));
    EXPECT_EQ(general.bridge_port_number, kept) << wire;
  }
}

TEST(HelperProtobuf, AnAbsentBridgePortNumberLeavesTheMember) {
  auto message = FromText<pb::GeneralInfo>(zorl2_test::kFullGeneralInfoText);
  message.clear_bridge_port_number();
  IntfEntry::GeneralInfo general = OtherEntry().getGeneralInfo();
  Helper helper;
  EXPECT_TRUE(helper.ConvertGeneralInfo(message, general));
  IntfEntry::GeneralInfo expected = zorl2_test::FullGeneralInfo();
  expected.bridge_port_number = 99;
  EXPECT_THAT(general, EqualsNative(expected));
}

TEST(HelperProtobuf, StringsOfAnyLengthAndContentReplaceTheOldOnes) {
  const std::string with_zero("a\0b", 3);
  const std::string not_utf8 = "\xFF\xFE";
  const std::string lengthy(100000, 'x');
  pb::GeneralInfo message;
  message.set_intf_name(with_zero);
  message.set_phy_addr(not_utf8);
  message.set_redundancy_group_id(std::numeric_limits<std::uint32_t>::max());
  message.set_redundancy_group_phy_addr(lengthy);
  IntfEntry::GeneralInfo general = OtherEntry().getGeneralInfo();
  Helper helper;
  EXPECT_TRUE(helper.ConvertGeneralInfo(message, general));
  EXPECT_EQ(general.intf_name, with_zero);
  EXPECT_EQ(general.phy_addr, not_utf8);
  EXPECT_EQ(general.redundancy_group_id, 4294967295U);
  EXPECT_EQ(general.redundancy_group_phy_addr, lengthy);
  message.clear_intf_name();
  message.set_intf_name("");
  EXPECT_TRUE(helper.ConvertGeneralInfo(message, general));
  EXPECT_EQ(general.intf_name, "");
}

TEST(HelperProtobuf, TheOperationalSpeedIsCopiedAndTheMtuWidened) {
  auto status = FromText<pb::StatusInfo>(zorl2_test::kFullStatusInfoText);
  auto physical = FromText<pb::PhysicalInfo>(zorl2_test::kFullPhysicalInfoText);
  for (const std::uint32_t number : {0U, 11U, 1410065408U, 4294967295U}) {
    status.set_operationalspeed(number);
    physical.set_intf_mtu(number);
    IntfEntry::StatusInfo native_status;
    IntfEntry::PhysicalInfo native_physical;
    native_physical.intf_mtu = std::numeric_limits<std::uint64_t>::max();
    Helper helper;
    EXPECT_TRUE(helper.ConvertStatusInfo(status, native_status));
    EXPECT_EQ(native_status.operationalSpeed, number);
    EXPECT_TRUE(helper.ConvertPhysicalInfo(physical, native_physical));
    EXPECT_EQ(native_physical.intf_mtu, std::uint64_t{number});
  }
}

TEST(HelperProtobuf, EveryProtocolAndStateOfABlockEntryIsTranslated) {
  for (int number = 0; number <= 12; ++number) {
    for (const bool blocked : {false, true}) {
      pb::BlockInfo message;
      message.set_protocol(static_cast<pb::ProtocolType>(number));
      message.set_state(blocked ? pb::BLOCK_STATE_BLOCK : pb::BLOCK_STATE_FORWARD);
      IntfEntry::BlockInfo block = {static_cast<ProtocolType>(77), static_cast<BlockState>(77)};
      Helper helper;
      EXPECT_TRUE(helper.ConvertBlockInfo(message, block));
      EXPECT_EQ(block.protocol, number == 0 ? 12 : number - 1);
      EXPECT_EQ(block.state, blocked ? 1 : 0);
    }
  }
}

}  // namespace
