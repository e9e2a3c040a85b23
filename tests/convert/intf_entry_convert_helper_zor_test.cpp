#include "convert/intf_entry_convert_helper_zor.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"
#include "tests/support/message_matchers.h"
#include "tests/support/unknown_fields.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsText;
using zorl2_test::ExpectInvalidKey;
using zorl2_test::FromText;
using zorl2_test::UnknownVarints;

namespace {

using Helper = IntfEntryConvertHelperZOR;

// A number that none of the nested enumerations lists.
template <typename Enum>
Enum Unlisted() {
  return static_cast<Enum>(99);
}

TEST(HelperZor, EveryMemberLandsInTheFieldOfItsName) {
  Helper helper;
  pb::GeneralInfo general;
  helper.ConvertGeneralInfo(zorl2_test::FullGeneralInfo(), general);
  EXPECT_THAT(general, EqualsText<pb::GeneralInfo>(zorl2_test::kFullGeneralInfoText));
  pb::StatusInfo status;
  helper.ConvertStatusInfo(zorl2_test::FullStatusInfo(), status);
  EXPECT_THAT(status, EqualsText<pb::StatusInfo>(zorl2_test::kFullStatusInfoText));
  pb::PhysicalInfo physical;
  helper.ConvertPhysicalInfo(zorl2_test::FullPhysicalInfo(), physical);
  EXPECT_THAT(physical, EqualsText<pb::PhysicalInfo>(zorl2_test::kFullPhysicalInfoText));
  pb::TypeInfo type;
  helper.ConvertTypeInfo(zorl2_test::FullTypeInfo(), type);
  EXPECT_THAT(type, EqualsText<pb::TypeInfo>(zorl2_test::kFullTypeInfoText));
  pb::BlockInfo block;
  helper.ConvertBlockInfo({CFM, BLOCK_STATE_BLOCK}, block);
  EXPECT_THAT(block, EqualsText<pb::BlockInfo>("protocol: CFM state: BLOCK_STATE_BLOCK"));
}

// Presence does not depend on the value.
TEST(HelperZor, EveryFieldIsPresentAlsoWhenItIsZero) {
  Helper helper;
  pb::GeneralInfo general;
  helper.ConvertGeneralInfo({}, general);
  EXPECT_THAT(general,
              EqualsText<pb::GeneralInfo>("intf_name: '' phy_addr: '' bridge_port_number: 0 "
                                          "redundancy_group_id: 0 redundancy_group_phy_addr: ''"));
  pb::StatusInfo status;
  helper.ConvertStatusInfo({}, status);
  EXPECT_THAT(status, EqualsText<pb::StatusInfo>(
                          "adminStatus: IF_ADMIN_UP operationalStatus: UP linkStatus: LINK_UP "
                          "operationalSpeed: 0 extraShutdown: false extraBlocking: false "
                          "configShutdown: false"));
  pb::PhysicalInfo physical;
  helper.ConvertPhysicalInfo({}, physical);
  EXPECT_THAT(physical, EqualsText<pb::PhysicalInfo>(
                            "intf_mtu: 0 eth_speed: SPEED_UNKNOWN eth_duplex_mode: MODE_UNKNOWN"));
  pb::TypeInfo type;
  helper.ConvertTypeInfo({}, type);
  EXPECT_THAT(type, EqualsText<pb::TypeInfo>(
                        "interfaceType: TYPE_UNKNOWN vlanType: NONE interfaceFlags { "
                        "if_l2_switching: false if_in_bundle: false l2_bundle: false "
                        "l2_sub_if: false point_to_point: false if_multicast: false }"));
  pb::BlockInfo block;
  helper.ConvertBlockInfo({}, block);
  EXPECT_THAT(block, EqualsText<pb::BlockInfo>("protocol: LLDP state: BLOCK_STATE_FORWARD"));
}

TEST(HelperZor, EachFlagAloneLandsInItsOwnFieldAndNoOther) {
  bool IntfEntry::InterfaceFlags::*const members[] = {
      &IntfEntry::InterfaceFlags::if_l2_switching, &IntfEntry::InterfaceFlags::if_in_bundle,
      &IntfEntry::InterfaceFlags::l2_bundle,       &IntfEntry::InterfaceFlags::l2_sub_if,
      &IntfEntry::InterfaceFlags::point_to_point,  &IntfEntry::InterfaceFlags::if_multicast};
  const char* const names[] = {"if_l2_switching", "if_in_bundle",   "l2_bundle",
                               "l2_sub_if",       "point_to_point", "if_multicast"};
  for (int i = 0; i < 6; ++i) {
    IntfEntry::InterfaceFlags flags;
    flags.*members[i] = true;
    auto expected = FromText<pb::InterfaceFlags>(
        "if_l2_switching: false if_in_bundle: false l2_bundle: false "
        "l2_sub_if: false point_to_point: false if_multicast: false");
    expected.GetReflection()->SetBool(&expected,
                                      expected.GetDescriptor()->FindFieldByName(names[i]), true);
    Helper helper;
    auto message = FromText<pb::InterfaceFlags>(zorl2_test::kFullInterfaceFlagsText);
    helper.ConvertInterfaceFlags(flags, message);
    EXPECT_THAT(message, EqualsMessage(expected));
    auto type = FromText<pb::TypeInfo>(zorl2_test::kFullTypeInfoText);
    helper.ConvertTypeInfo({IntfEntry::OTHER, flags, IntfEntry::NONE}, type);
    EXPECT_THAT(type.interfaceflags(), EqualsMessage(expected));
  }
}

TEST(HelperZor, EachStatusMemberAloneLandsInItsOwnField) {
  const auto changed = [](const IntfEntry::StatusInfo& native) {
    Helper helper;
    pb::StatusInfo zero, message;
    helper.ConvertStatusInfo({}, zero);
    helper.ConvertStatusInfo(native, message);
    return zorl2_test::MessageDifference(zero, message);
  };
  IntfEntry::StatusInfo native;
  native.adminStatus = IntfEntry::IF_ADMIN_DOWN;
  EXPECT_EQ(changed(native), "modified: adminStatus: IF_ADMIN_UP -> IF_ADMIN_DOWN\n");
  native = {};
  native.operationalStatus = IntfEntry::DOWN;
  EXPECT_EQ(changed(native), "modified: operationalStatus: UP -> DOWN\n");
  native = {};
  native.linkStatus = IntfEntry::LINK_DOWN;
  EXPECT_EQ(changed(native), "modified: linkStatus: LINK_UP -> LINK_DOWN\n");
  native = {};
  native.extraShutdown = true;
  EXPECT_EQ(changed(native), "modified: extraShutdown: false -> true\n");
  native = {};
  native.extraBlocking = true;
  EXPECT_EQ(changed(native), "modified: extraBlocking: false -> true\n");
  native = {};
  native.configShutdown = true;
  EXPECT_EQ(changed(native), "modified: configShutdown: false -> true\n");
}

TEST(HelperZor, TheMtuKeepsItsLow32Bits) {
  const std::pair<std::uint64_t, std::uint32_t> cases[] = {
      {4294968796U, 1500},
      {4294967295U, 4294967295U},
      {4294967296U, 0},
      {std::numeric_limits<std::uint64_t>::max(), 4294967295U}};
  for (const auto& [native, kept] : cases) {
    pb::PhysicalInfo message;
    Helper helper;
    helper.ConvertPhysicalInfo({native, IntfEntry::SPEED_1_GBS, IntfEntry::FULL}, message);
    EXPECT_EQ(message.intf_mtu(), kept) << native;
  }
}

TEST(HelperZor, TheBridgePortNumberIsWidenedAndTheOperationalSpeedCopied) {
  Helper helper;
  IntfEntry::GeneralInfo general;
  general.bridge_port_number = 65535;
  pb::GeneralInfo general_message;
  helper.ConvertGeneralInfo(general, general_message);
  EXPECT_EQ(general_message.bridge_port_number(), 65535U);
  IntfEntry::StatusInfo status;
  status.operationalSpeed = 1410065408;
  pb::StatusInfo status_message;
  helper.ConvertStatusInfo(status, status_message);
  EXPECT_EQ(status_message.operationalspeed(), 1410065408U);
}

TEST(HelperZor, EveryProtocolAndStateOfABlockEntryIsTranslated) {
  Helper helper;
  pb::BlockInfo message;
  for (int number = 0; number <= 12; ++number) {
    helper.ConvertBlockInfo({static_cast<ProtocolType>(number), BLOCK_STATE_BLOCK}, message);
    EXPECT_EQ(message.protocol(), number == 12 ? 0 : number + 1);
    EXPECT_EQ(message.state(), pb::BLOCK_STATE_BLOCK);
  }
  for (const std::int32_t number : zorl2_test::NumbersOutside(13)) {
    helper.ConvertBlockInfo({static_cast<ProtocolType>(number), static_cast<BlockState>(number)},
                            message);
    EXPECT_EQ(message.protocol(), pb::PROTOCOL_UNKNOWN) << number;
    EXPECT_EQ(message.state(), pb::BLOCK_STATE_FORWARD) << number;
  }
}

TEST(HelperZor, AStatusThatCannotBeTranslatedLeavesTheMessageAsItWas) {
  const auto before = FromText<pb::StatusInfo>("operationalSpeed: 5 linkStatus: LINK_UP");
  IntfEntry::StatusInfo cases[3];
  for (IntfEntry::StatusInfo& info : cases) info = zorl2_test::FullStatusInfo();
  cases[0].adminStatus = Unlisted<IntfEntry::AdminStatus>();
  cases[1].operationalStatus = Unlisted<IntfEntry::OperationalStatus>();
  cases[2].linkStatus = Unlisted<IntfEntry::LinkStatus>();
  for (const IntfEntry::StatusInfo& native : cases) {
    pb::StatusInfo message = before;
    Helper helper;
    ExpectInvalidKey([&] { helper.ConvertStatusInfo(native, message); });
    EXPECT_THAT(message, EqualsMessage(before));
  }
}

TEST(HelperZor, APhysicalEnumerationThatCannotBeTranslatedLeavesWhatWasSetBefore) {
  Helper helper;
  pb::PhysicalInfo message;
  IntfEntry::PhysicalInfo native = zorl2_test::FullPhysicalInfo();
  native.eth_speed = Unlisted<IntfEntry::EthernetSpeed>();
  ExpectInvalidKey([&] { helper.ConvertPhysicalInfo(native, message); });
  EXPECT_THAT(message, EqualsText<pb::PhysicalInfo>("intf_mtu: 9216"));
  message.Clear();
  native = zorl2_test::FullPhysicalInfo();
  native.eth_duplex_mode = Unlisted<IntfEntry::EthernetDuplexMode>();
  ExpectInvalidKey([&] { helper.ConvertPhysicalInfo(native, message); });
  EXPECT_THAT(message, EqualsText<pb::PhysicalInfo>("intf_mtu: 9216 eth_speed: SPEED_25_GBS"));
}

TEST(HelperZor, ATypeEnumerationThatCannotBeTranslatedLeavesWhatWasSetBefore) {
  Helper helper;
  pb::TypeInfo message;
  IntfEntry::TypeInfo native = zorl2_test::FullTypeInfo();
  native.interfaceType = Unlisted<IntfEntry::InterfaceType>();
  ExpectInvalidKey([&] { helper.ConvertTypeInfo(native, message); });
  EXPECT_THAT(message, EqualsText<pb::TypeInfo>(""));
  native = zorl2_test::FullTypeInfo();
  native.vlanType = Unlisted<IntfEntry::VlanType>();
  ExpectInvalidKey([&] { helper.ConvertTypeInfo(native, message); });
  EXPECT_THAT(message,
              EqualsText<pb::TypeInfo>("interfaceType: ETHERNET_BUNDLE interfaceFlags { " +
                                       std::string(zorl2_test::kFullInterfaceFlagsText) + " }"));
}

// What the message held in other fields stays; only the nested flags are replaced as a whole.
TEST(HelperZor, NothingIsClearedButTheNestedFlags) {
  Helper helper;
  const auto with_unknown = [](auto message) {
    message.mutable_unknown_fields()->AddVarint(99, 7);
    return message;
  };
  auto general = with_unknown(pb::GeneralInfo());
  helper.ConvertGeneralInfo(zorl2_test::FullGeneralInfo(), general);
  EXPECT_THAT(UnknownVarints(general), ElementsAre(Pair(99, 7)));
  auto flags = with_unknown(pb::InterfaceFlags());
  helper.ConvertInterfaceFlags({}, flags);
  EXPECT_THAT(UnknownVarints(flags), ElementsAre(Pair(99, 7)));
  auto block = with_unknown(pb::BlockInfo());
  helper.ConvertBlockInfo({}, block);
  EXPECT_THAT(UnknownVarints(block), ElementsAre(Pair(99, 7)));
  auto status = with_unknown(pb::StatusInfo());
  helper.ConvertStatusInfo({}, status);
  EXPECT_THAT(UnknownVarints(status), ElementsAre(Pair(99, 7)));
  auto physical = with_unknown(pb::PhysicalInfo());
  helper.ConvertPhysicalInfo({}, physical);
  EXPECT_THAT(UnknownVarints(physical), ElementsAre(Pair(99, 7)));
  auto type = with_unknown(pb::TypeInfo());
  type.mutable_interfaceflags()->mutable_unknown_fields()->AddVarint(98, 6);
  helper.ConvertTypeInfo({}, type);
  EXPECT_THAT(UnknownVarints(type), ElementsAre(Pair(99, 7)));
  EXPECT_THAT(UnknownVarints(type.interfaceflags()), IsEmpty());
}

}  // namespace
