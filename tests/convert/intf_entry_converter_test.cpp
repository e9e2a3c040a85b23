#include "convert/intf_entry_converter.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

#include "tests/convert/conversions.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::IsEmpty;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::EqualsText;
using zorl2_test::ExpectInvalidKey;
using zorl2_test::ExpectMapAt;
using zorl2_test::FromText;
using zorl2_test::FullEntry;
using zorl2_test::FullEntryMessage;
using zorl2_test::NativeDifference;
using zorl2_test::NumbersOutside;
using zorl2_test::OtherEntry;
using zorl2_test::Unlisted;

namespace {

// Converts the message into an entry in which every member was different.
IntfEntry ToNative(const pb::IntfEntry& message) {
  IntfEntry entry = OtherEntry();
  EXPECT_TRUE(IntfEntryConverter().Convert(message, entry));
  return entry;
}

// A message with fields that no conversion writes.
pb::IntfEntry UsedMessage() {
  auto message = FromText<pb::IntfEntry>(
      "zorid { value: [7, 7, 7, 7, 7] } shutdownProtos: EFM blockInfo { protocol: LFD }");
  zorl2_test::AddUnknownField(message);
  return message;
}

pb::IntfEntry ToMessage(const IntfEntry& entry) {
  pb::IntfEntry message = UsedMessage();
  EXPECT_TRUE(IntfEntryConverter().Convert(entry, message));
  return message;
}

TEST(IntfEntryConverter, MessageToNative_WritesEveryMember) {
  EXPECT_THAT(ToNative(FullEntryMessage()), EqualsNative(FullEntry()));
}

TEST(IntfEntryConverter, NativeToMessage_SetsEveryFieldAndClearsTheRest) {
  EXPECT_THAT(ToMessage(FullEntry()), EqualsMessage(FullEntryMessage()));
}

TEST(IntfEntryConverter, RoundTrip_AnEmptyEntryHasEveryField) {
  const pb::IntfEntry message = ToMessage(IntfEntry{});
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_THAT(message.zorid(), EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
  EXPECT_THAT(message.parent(), EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
  EXPECT_TRUE(message.generalinfo().has_bridge_port_number());
  EXPECT_THAT(message.shutdownprotos(), IsEmpty());
  EXPECT_THAT(message.blockinfo(), IsEmpty());
  EXPECT_EQ(message.intfcategory(), pb::L1);
  EXPECT_THAT(ToNative(message), EqualsNative(IntfEntry{}));
}

TEST(IntfEntryConverter, RoundTrip_OneConverterServesAnyNumberOfCalls) {
  IntfEntryConverter converter;
  pb::IntfEntry message;
  IntfEntry entry;
  for (const IntfEntry& source : {FullEntry(), IntfEntry{}, OtherEntry(), FullEntry()}) {
    EXPECT_TRUE(converter.Convert(source, message));
    EXPECT_TRUE(converter.Convert(message, entry));
  }
  EXPECT_THAT(message, EqualsMessage(FullEntryMessage()));
  EXPECT_THAT(entry, EqualsNative(FullEntry()));
}

TEST(IntfEntryConverter, MessageToNative_AMissingRequiredFieldLeavesTheEntryUnchanged) {
  const auto paths = zorl2_test::RequiredFields(FullEntryMessage());
  ASSERT_EQ(paths.size(), 33U);
  for (const auto& path : paths) {
    SCOPED_TRACE(path.Name());
    pb::IntfEntry message = FullEntryMessage();
    zorl2_test::RemoveField(path, message);
    zorl2_test::ExpectRejected<IntfEntryConverter>(message, OtherEntry());
  }
}

// Presence decides: a caller can fill an absent submessage through a pointer that it kept.
TEST(IntfEntryConverter, MessageToNative_AnAbsentParentBecomesZero) {
  pb::IntfEntry message = FullEntryMessage();
  pb::Zorid* parent = message.mutable_parent();
  message.clear_parent();
  zorl2_test::Append(*parent, {1, 2, 3, 4});
  const IntfEntry entry = ToNative(message);
  EXPECT_EQ(NativeDifference(FullEntry(), entry), "- parent: 55.66.77.188\n+ parent: 0.0.0.0\n");
  EXPECT_THAT(ToMessage(entry).parent(), EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
}

TEST(IntfEntryConverter, MessageToNative_AnAbsentBridgePortNumberBecomesZero) {
  pb::IntfEntry message = FullEntryMessage();
  message.mutable_generalinfo()->clear_bridge_port_number();
  EXPECT_EQ(NativeDifference(FullEntry(), ToNative(message)),
            "- generalInfo.bridge_port_number: 4107\n+ generalInfo.bridge_port_number: 0\n");
}

TEST(IntfEntryConverter, MessageToNative_AWrongCountZeroesTheIdentifierAndConvertsTheRest) {
  for (const char* values : {"", "value: [1, 2, 3]", "value: [1, 2, 3, 4, 5]"}) {
    pb::IntfEntry message = FullEntryMessage();
    *message.mutable_zorid() = FromText<pb::Zorid>(values);
    EXPECT_EQ(NativeDifference(FullEntry(), ToNative(message)),
              "- id: 11.22.33.44\n+ id: 0.0.0.0\n");
    message = FullEntryMessage();
    *message.mutable_parent() = FromText<pb::Zorid>(values);
    EXPECT_EQ(NativeDifference(FullEntry(), ToNative(message)),
              "- parent: 55.66.77.188\n+ parent: 0.0.0.0\n");
  }
}

TEST(IntfEntryConverter, Narrowing_OctetsPortNumbersAndTheMtuKeepTheirLowBits) {
  pb::IntfEntry message = FullEntryMessage();
  *message.mutable_zorid() = FromText<pb::Zorid>("value: [300, 256, 255, 0]");
  message.mutable_generalinfo()->set_bridge_port_number(70000);
  message.mutable_physicalinfo()->set_intf_mtu(4294967295U);
  const IntfEntry entry = ToNative(message);
  EXPECT_EQ(entry.getId(), (zorid_t{{44, 0, 255, 0}}));
  EXPECT_EQ(entry.getGeneralInfo().bridge_port_number, 4464);
  EXPECT_EQ(entry.getPhysicalInfo().intf_mtu, 4294967295U);
  // 2^32 + 1500.
  EXPECT_EQ(OtherEntry().getPhysicalInfo().intf_mtu, 4294968796U);
  EXPECT_EQ(ToMessage(OtherEntry()).physicalinfo().intf_mtu(), 1500U);
}

TEST(IntfEntryConverter, RoundTrip_BothListsKeepEveryProtocolOrderAndDuplicates) {
  pb::IntfEntry message = FullEntryMessage();
  message.clear_blockinfo();
  for (int number = 0; number <= 12; ++number) {
    message.add_shutdownprotos(static_cast<pb::ProtocolType>(number));
    pb::BlockInfo& block = *message.add_blockinfo();
    block.set_protocol(static_cast<pb::ProtocolType>(number));
    block.set_state(number % 2 == 0 ? pb::BLOCK_STATE_BLOCK : pb::BLOCK_STATE_FORWARD);
  }
  *message.add_blockinfo() = message.blockinfo(5);
  const IntfEntry entry = ToNative(message);
  EXPECT_THAT(entry.getShutdownProtos(),
              ElementsAre(LACP, L1_PROTO, LACP, 12, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
  EXPECT_EQ(entry.getBlockInfo().front().protocol, PROTOCOL_UNKNOWN);
  EXPECT_EQ(entry.getBlockInfo().back().protocol, ERPS);
  EXPECT_THAT(ToMessage(entry), EqualsMessage(message));
}

TEST(IntfEntryConverter, MessageToNative_EmptyListsReplaceThoseOfTheRecord) {
  pb::IntfEntry message = FullEntryMessage();
  message.clear_shutdownprotos();
  message.clear_blockinfo();
  const IntfEntry entry = ToNative(message);
  EXPECT_THAT(entry.getShutdownProtos(), IsEmpty());
  EXPECT_THAT(entry.getBlockInfo(), IsEmpty());
}

TEST(IntfEntryConverter, AnUnlistedProtocolBecomesUnknownAndAnUnlistedStateForwarding) {
  for (const std::int32_t number : NumbersOutside(13)) {
    SCOPED_TRACE(number);
    IntfEntryBuilder builder;
    builder.addShutdownProto(static_cast<ProtocolType>(number))
        .addBlockInfo({static_cast<ProtocolType>(number), static_cast<BlockState>(number)});
    const pb::IntfEntry sent = ToMessage(builder.Build());
    EXPECT_THAT(sent.shutdownprotos(), ElementsAre(pb::PROTOCOL_UNKNOWN));
    EXPECT_THAT(sent.blockinfo(0),
                EqualsText<pb::BlockInfo>("protocol: PROTOCOL_UNKNOWN state: BLOCK_STATE_FORWARD"));

    pb::IntfEntry message = FullEntryMessage();
    message.set_shutdownprotos(1, static_cast<pb::ProtocolType>(number));
    message.mutable_blockinfo(0)->set_protocol(static_cast<pb::ProtocolType>(number));
    message.mutable_blockinfo(0)->set_state(static_cast<pb::BlockState>(number));
    const IntfEntry entry = ToNative(message);
    EXPECT_THAT(entry.getShutdownProtos(), ElementsAre(LACP, PROTOCOL_UNKNOWN, LACP));
    EXPECT_THAT(entry.getBlockInfo().front(),
                EqualsNative(IntfEntry::BlockInfo{PROTOCOL_UNKNOWN, BLOCK_STATE_FORWARD}));
  }
}

TEST(IntfEntryConverter, RoundTrip_PreservesEveryCategory) {
  for (int number = 0; number <= 4; ++number) {
    pb::IntfEntry message = FullEntryMessage();
    message.set_intfcategory(static_cast<pb::InterfaceCategory>(number));
    const IntfEntry entry = ToNative(message);
    EXPECT_EQ(entry.getInterfaceCategory(), number);
    EXPECT_EQ(ToMessage(entry).intfcategory(), number);
  }
}

TEST(IntfEntryConverter, NativeToMessage_ReplacesWhatAnAbsentSubmessageHolds) {
  pb::IntfEntry message = FullEntryMessage();
  pb::Zorid* zorid = message.mutable_zorid();
  pb::Zorid* parent = message.mutable_parent();
  message.Clear();
  zorl2_test::Append(*zorid, {91});
  zorl2_test::Append(*parent, {92, 93, 94, 95, 96});
  ASSERT_TRUE(IntfEntryConverter().Convert(FullEntry(), message));
  EXPECT_THAT(message, EqualsMessage(FullEntryMessage()));
}

// One of the seven nested enumerations: how many values it has, and how code sets any number.
struct Nested {
  const char* name;
  int count;
  std::function<void(pb::IntfEntry&, int)> set;

  friend std::ostream& operator<<(std::ostream& out, const Nested& n) { return out << n.name; }
};
class UnlistedNested : public testing::TestWithParam<Nested> {};

TEST_P(UnlistedNested, MessageToNative_LeavesTheEntryUnchanged) {
  for (const std::int32_t number : NumbersOutside(GetParam().count)) {
    pb::IntfEntry message = FullEntryMessage();
    GetParam().set(message, number);
    ASSERT_TRUE(message.IsInitialized());
    IntfEntry entry = OtherEntry();
    ExpectInvalidKey([&] { IntfEntryConverter().Convert(message, entry); });
    EXPECT_THAT(entry, EqualsNative(OtherEntry())) << number;
  }
}

#define NESTED(part, field, type, count)                                                   \
  Nested {                                                                                 \
#type, count,                                                                          \
        [](pb::IntfEntry & m,                                                              \
           int number) { m.mutable_##part()->set_##field(static_cast<pb::type>(number)); } \
  }
INSTANTIATE_TEST_SUITE_P(
    Enumerations, UnlistedNested,
    testing::Values(NESTED(statusinfo, adminstatus, AdminStatus, 2),
                    NESTED(statusinfo, operationalstatus, OperationalStatus, 2),
                    NESTED(statusinfo, linkstatus, LinkStatus, 2),
                    NESTED(physicalinfo, eth_speed, EthernetSpeed, 12),
                    NESTED(physicalinfo, eth_duplex_mode, EthernetDuplexMode, 3),
                    NESTED(typeinfo, interfacetype, InterfaceType, 5),
                    NESTED(typeinfo, vlantype, VlanType, 5)),
    [](const auto& nested) { return nested.param.name; });

TEST(IntfEntryConverter, MessageToNative_AnUnlistedCategoryLeavesTheEntryUnchanged) {
  for (const std::int32_t number : NumbersOutside(5)) {
    pb::IntfEntry message = FullEntryMessage();
    message.set_intfcategory(static_cast<pb::InterfaceCategory>(number));
    IntfEntry entry = OtherEntry();
    ExpectMapAt([&] { IntfEntryConverter().Convert(message, entry); });
    EXPECT_THAT(entry, EqualsNative(OtherEntry())) << number;
  }
}

// Converts an entry with an unlisted value into a used message and returns the message.
template <typename Info>
pb::IntfEntry Rejected(const Info& info) {
  IntfEntryBuilder builder(FullEntry());
  if constexpr (std::is_same_v<Info, IntfEntry::StatusInfo>) builder.addStatusInfo(info);
  if constexpr (std::is_same_v<Info, IntfEntry::PhysicalInfo>) builder.addPhysicalInfo(info);
  if constexpr (std::is_same_v<Info, IntfEntry::TypeInfo>) builder.addTypeInfo(info);
  const IntfEntry entry = builder.Build();
  pb::IntfEntry message = UsedMessage();
  ExpectInvalidKey([&] { IntfEntryConverter().Convert(entry, message); });
  return message;
}

// The first fields of the full message. Parts are added to it in the order of the fields.
pb::IntfEntry UpToGeneralInfo() {
  const pb::IntfEntry full = FullEntryMessage();
  pb::IntfEntry message;
  *message.mutable_zorid() = full.zorid();
  *message.mutable_parent() = full.parent();
  *message.mutable_generalinfo() = full.generalinfo();
  return message;
}

TEST(IntfEntryConverter, NativeToMessage_AnUnlistedStatusLeavesAnEmptyStatusInfo) {
  pb::IntfEntry expected = UpToGeneralInfo();
  expected.mutable_statusinfo();
  IntfEntry::StatusInfo info = zorl2_test::FullStatusInfo();
  info.adminStatus = Unlisted<IntfEntry::AdminStatus>();
  EXPECT_THAT(Rejected(info), EqualsMessage(expected));
  info = zorl2_test::FullStatusInfo();
  info.operationalStatus = Unlisted<IntfEntry::OperationalStatus>();
  EXPECT_THAT(Rejected(info), EqualsMessage(expected));
  info = zorl2_test::FullStatusInfo();
  info.linkStatus = Unlisted<IntfEntry::LinkStatus>();
  EXPECT_THAT(Rejected(info), EqualsMessage(expected));
}

TEST(IntfEntryConverter, NativeToMessage_AnUnlistedSpeedOrDuplexModeLeavesTheFieldsBeforeItSet) {
  pb::IntfEntry expected = UpToGeneralInfo();
  *expected.mutable_statusinfo() = FullEntryMessage().statusinfo();
  expected.mutable_physicalinfo()->set_intf_mtu(9216);
  IntfEntry::PhysicalInfo info = zorl2_test::FullPhysicalInfo();
  info.eth_speed = Unlisted<IntfEntry::EthernetSpeed>();
  EXPECT_THAT(Rejected(info), EqualsMessage(expected));
  expected.mutable_physicalinfo()->set_eth_speed(pb::SPEED_25_GBS);
  info = zorl2_test::FullPhysicalInfo();
  info.eth_duplex_mode = Unlisted<IntfEntry::EthernetDuplexMode>();
  EXPECT_THAT(Rejected(info), EqualsMessage(expected));
}

TEST(IntfEntryConverter, NativeToMessage_AnUnlistedTypeLeavesTheFieldsBeforeItSet) {
  pb::IntfEntry expected = UpToGeneralInfo();
  *expected.mutable_statusinfo() = FullEntryMessage().statusinfo();
  *expected.mutable_physicalinfo() = FullEntryMessage().physicalinfo();
  expected.mutable_typeinfo();
  IntfEntry::TypeInfo info = zorl2_test::FullTypeInfo();
  info.interfaceType = Unlisted<IntfEntry::InterfaceType>();
  EXPECT_THAT(Rejected(info), EqualsMessage(expected));
  *expected.mutable_typeinfo() = FullEntryMessage().typeinfo();
  expected.mutable_typeinfo()->clear_vlantype();
  info = zorl2_test::FullTypeInfo();
  info.vlanType = Unlisted<IntfEntry::VlanType>();
  EXPECT_THAT(Rejected(info), EqualsMessage(expected));
}

TEST(IntfEntryConverter, NativeToMessage_AnUnlistedCategoryLeavesEveryOtherFieldSet) {
  pb::IntfEntry expected = FullEntryMessage();
  expected.clear_intfcategory();
  for (const std::int32_t number : NumbersOutside(5)) {
    IntfEntryBuilder builder(FullEntry());
    builder.setInterfaceCategory(static_cast<InterfaceCategory>(number));
    const IntfEntry entry = builder.Build();
    pb::IntfEntry message = UsedMessage();
    ExpectMapAt([&] { IntfEntryConverter().Convert(entry, message); });
    EXPECT_THAT(message, EqualsMessage(expected)) << number;
    // The message is usable afterwards.
    EXPECT_TRUE(IntfEntryConverter().Convert(FullEntry(), message));
    EXPECT_THAT(message, EqualsMessage(FullEntryMessage()));
  }
}

}  // namespace
