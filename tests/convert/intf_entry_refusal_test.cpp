// Entries with numbers that no enumeration lists, on their way into a message: what leaves the
// call, and what the message holds then.
#include <gmock/gmock.h>

#include <string>

#include "convert/intf_entry_converter.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;

using zorl2_test::EqualsMessage;
using zorl2_test::ExpectInvalidKey;
using zorl2_test::ExpectMapAt;
using zorl2_test::FromText;
using zorl2_test::FullEntry;
using zorl2_test::FullEntryMessage;

namespace {

template <typename Enum>
Enum Unlisted() {
  return static_cast<Enum>(99);
}

// What the message holds when the entry is refused, starting from one that holds everything.
pb::IntfEntry LeftBehind(const IntfEntry& entry) {
  pb::IntfEntry message = FullEntryMessage();
  message.mutable_unknown_fields()->AddVarint(99, 1);
  ExpectInvalidKey([&] { IntfEntryConverter().Convert(entry, message); });
  return message;
}

pb::IntfEntry LeftBehind(const IntfEntry::StatusInfo& info) {
  IntfEntryBuilder builder(FullEntry());
  return LeftBehind(builder.addStatusInfo(info).Build());
}

pb::IntfEntry LeftBehind(const IntfEntry::PhysicalInfo& info) {
  IntfEntryBuilder builder(FullEntry());
  return LeftBehind(builder.addPhysicalInfo(info).Build());
}

pb::IntfEntry LeftBehind(const IntfEntry::TypeInfo& info) {
  IntfEntryBuilder builder(FullEntry());
  return LeftBehind(builder.addTypeInfo(info).Build());
}

// The full entry as far as the general information; what follows is the test's own.
pb::IntfEntry UpToGeneralInfo() {
  pb::IntfEntry message = FullEntryMessage();
  message.clear_statusinfo();
  message.clear_physicalinfo();
  message.clear_typeinfo();
  message.clear_shutdownprotos();
  message.clear_blockinfo();
  message.clear_intfcategory();
  return message;
}

TEST(IntfEntryRefusal, AStatusLeavesItsMessagePresentAndEmpty) {
  pb::IntfEntry expected = UpToGeneralInfo();
  expected.mutable_statusinfo();
  IntfEntry::StatusInfo info = zorl2_test::FullStatusInfo();
  info.adminStatus = Unlisted<IntfEntry::AdminStatus>();
  EXPECT_THAT(LeftBehind(info), EqualsMessage(expected));
  info = zorl2_test::FullStatusInfo();
  info.operationalStatus = Unlisted<IntfEntry::OperationalStatus>();
  EXPECT_THAT(LeftBehind(info), EqualsMessage(expected));
  info = zorl2_test::FullStatusInfo();
  info.linkStatus = Unlisted<IntfEntry::LinkStatus>();
  EXPECT_THAT(LeftBehind(info), EqualsMessage(expected));
}

TEST(IntfEntryRefusal, ASpeedOrDuplexModeLeavesThePhysicalFieldsBeforeIt) {
  pb::IntfEntry expected = UpToGeneralInfo();
  *expected.mutable_statusinfo() = FromText<pb::StatusInfo>(zorl2_test::kFullStatusInfoText);
  *expected.mutable_physicalinfo() = FromText<pb::PhysicalInfo>("intf_mtu: 9216");
  IntfEntry::PhysicalInfo info = zorl2_test::FullPhysicalInfo();
  info.eth_speed = Unlisted<IntfEntry::EthernetSpeed>();
  EXPECT_THAT(LeftBehind(info), EqualsMessage(expected));
  expected.mutable_physicalinfo()->set_eth_speed(pb::SPEED_25_GBS);
  info = zorl2_test::FullPhysicalInfo();
  info.eth_duplex_mode = Unlisted<IntfEntry::EthernetDuplexMode>();
  EXPECT_THAT(LeftBehind(info), EqualsMessage(expected));
}

TEST(IntfEntryRefusal, ATypeLeavesTheTypeFieldsBeforeIt) {
  pb::IntfEntry expected = UpToGeneralInfo();
  *expected.mutable_statusinfo() = FromText<pb::StatusInfo>(zorl2_test::kFullStatusInfoText);
  *expected.mutable_physicalinfo() = FromText<pb::PhysicalInfo>(zorl2_test::kFullPhysicalInfoText);
  expected.mutable_typeinfo();
  IntfEntry::TypeInfo info = zorl2_test::FullTypeInfo();
  info.interfaceType = Unlisted<IntfEntry::InterfaceType>();
  EXPECT_THAT(LeftBehind(info), EqualsMessage(expected));
  *expected.mutable_typeinfo() = FromText<pb::TypeInfo>(zorl2_test::kFullTypeInfoText);
  expected.mutable_typeinfo()->clear_vlantype();
  info = zorl2_test::FullTypeInfo();
  info.vlanType = Unlisted<IntfEntry::VlanType>();
  EXPECT_THAT(LeftBehind(info), EqualsMessage(expected));
}

TEST(IntfEntryRefusal, ACategoryLeavesEverythingButTheCategory) {
  pb::IntfEntry expected = FullEntryMessage();
  expected.clear_intfcategory();
  auto numbers = zorl2_test::NumbersOutside(5);
  numbers.push_back(7);
  for (const std::int32_t number : numbers) {
    IntfEntryBuilder builder(FullEntry());
    builder.setInterfaceCategory(static_cast<InterfaceCategory>(number));
    const IntfEntry entry = builder.Build();
    pb::IntfEntry message;
    ExpectMapAt([&] { IntfEntryConverter().Convert(entry, message); });
    EXPECT_THAT(message, EqualsMessage(expected)) << number;
    EXPECT_FALSE(message.IsInitialized());
  }
}

// The first of several refusals, in the order of the fields, is the one that leaves the call.
TEST(IntfEntryRefusal, TheFirstInTheOrderOfTheFieldsDecides) {
  IntfEntryBuilder builder(FullEntry());
  IntfEntry::TypeInfo type = zorl2_test::FullTypeInfo();
  type.vlanType = Unlisted<IntfEntry::VlanType>();
  builder.addTypeInfo(type).setInterfaceCategory(Unlisted<InterfaceCategory>());
  const pb::IntfEntry message = LeftBehind(builder.Build());
  EXPECT_FALSE(message.typeinfo().has_vlantype());
  EXPECT_EQ(message.shutdownprotos_size(), 0);
}

TEST(IntfEntryRefusal, TheConverterIsUsableAfterwards) {
  IntfEntryConverter converter;
  IntfEntryBuilder builder(FullEntry());
  builder.setInterfaceCategory(Unlisted<InterfaceCategory>());
  pb::IntfEntry message;
  ExpectMapAt([&] { converter.Convert(builder.Build(), message); });
  EXPECT_TRUE(converter.Convert(FullEntry(), message));
  EXPECT_THAT(message, EqualsMessage(FullEntryMessage()));
}

}  // namespace
