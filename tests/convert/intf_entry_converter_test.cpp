#include "convert/intf_entry_converter.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>

#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using testing::IsEmpty;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::EqualsText;
using zorl2_test::FromText;
using zorl2_test::FullEntry;
using zorl2_test::FullEntryMessage;
using zorl2_test::OtherEntry;

namespace {

// The entry that the message becomes, starting from one in which everything is different.
IntfEntry ToNative(const pb::IntfEntry& message) {
  IntfEntry entry = OtherEntry();
  EXPECT_TRUE(IntfEntryConverter().Convert(message, entry));
  return entry;
}

// The message that the entry becomes, starting from one that holds something.
pb::IntfEntry ToMessage(const IntfEntry& entry) {
  auto message = FromText<pb::IntfEntry>(
      "zorid { value: [7, 7, 7, 7, 7] } shutdownProtos: EFM blockInfo { protocol: LFD }");
  message.mutable_unknown_fields()->AddVarint(99, 1);
  EXPECT_TRUE(IntfEntryConverter().Convert(entry, message));
  return message;
}

TEST(IntfEntryConverter, MessageToNative_ConvertsEveryField) {
  EXPECT_THAT(ToNative(FullEntryMessage()), EqualsNative(FullEntry()));
}

TEST(IntfEntryConverter, NativeToMessage_ConvertsEveryMember) {
  EXPECT_THAT(ToMessage(FullEntry()), EqualsMessage(FullEntryMessage()));
}

TEST(IntfEntryConverter, NativeToMessage_AnEmptyEntryHasEveryField) {
  const pb::IntfEntry message = ToMessage(IntfEntry{});
  EXPECT_TRUE(message.IsInitialized());
  EXPECT_THAT(message.zorid(), EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
  EXPECT_THAT(message.parent(), EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
  EXPECT_TRUE(message.generalinfo().has_bridge_port_number());
  EXPECT_EQ(message.shutdownprotos_size(), 0);
  EXPECT_EQ(message.blockinfo_size(), 0);
  EXPECT_EQ(message.intfcategory(), pb::L1);
  EXPECT_THAT(ToNative(message), EqualsNative(IntfEntry{}));
}

TEST(IntfEntryConverter, MessageToNative_WithoutARequiredFieldTheEntryIsAsItWas) {
  const auto paths = zorl2_test::RequiredFields(FullEntryMessage());
  ASSERT_EQ(paths.size(), 33U);
  for (const auto& path : paths) {
    pb::IntfEntry message = FullEntryMessage();
    zorl2_test::RemoveField(path, message);
    IntfEntry entry = OtherEntry();
    EXPECT_FALSE(IntfEntryConverter().Convert(message, entry)) << path.Name();
    EXPECT_THAT(entry, EqualsNative(OtherEntry())) << path.Name();
  }
}

TEST(IntfEntryConverter, MessageToNative_AMissingParentBecomesZero) {
  pb::IntfEntry message = FullEntryMessage();
  message.clear_parent();
  const IntfEntry entry = ToNative(message);
  EXPECT_EQ(zorl2_test::NativeDifference(FullEntry(), entry),
            "- parent: 55.66.77.188\n+ parent: 0.0.0.0\n");
  // On the way back it is there.
  EXPECT_THAT(ToMessage(entry).parent(), EqualsText<pb::Zorid>("value: [0, 0, 0, 0]"));
}

TEST(IntfEntryConverter, MessageToNative_AMissingBridgePortNumberBecomesZero) {
  pb::IntfEntry message = FullEntryMessage();
  message.mutable_generalinfo()->clear_bridge_port_number();
  EXPECT_EQ(zorl2_test::NativeDifference(FullEntry(), ToNative(message)),
            "- generalInfo.bridge_port_number: 4107\n+ generalInfo.bridge_port_number: 0\n");
}

TEST(IntfEntryConverter, MessageToNative_AWronglySizedIdentifierBecomesZeroAndTheRestIsConverted) {
  for (const char* values : {"", "value: [1, 2, 3]", "value: [1, 2, 3, 4, 5]"}) {
    pb::IntfEntry message = FullEntryMessage();
    *message.mutable_zorid() = FromText<pb::Zorid>(values);
    EXPECT_EQ(zorl2_test::NativeDifference(FullEntry(), ToNative(message)),
              "- id: 11.22.33.44\n+ id: 0.0.0.0\n")
        << values;
    message = FullEntryMessage();
    *message.mutable_parent() = FromText<pb::Zorid>(values);
    EXPECT_EQ(zorl2_test::NativeDifference(FullEntry(), ToNative(message)),
              "- parent: 55.66.77.188\n+ parent: 0.0.0.0\n")
        << values;
  }
}

TEST(IntfEntryConverter, MessageToNative_OctetsAndPortNumbersAreCutAndTheMtuWidened) {
  pb::IntfEntry message = FullEntryMessage();
  *message.mutable_zorid() = FromText<pb::Zorid>("value: [300, 256, 255, 0]");
  message.mutable_generalinfo()->set_bridge_port_number(70000);
  message.mutable_physicalinfo()->set_intf_mtu(4294967295U);
  const IntfEntry entry = ToNative(message);
  EXPECT_EQ(entry.getId(), (zorid_t{{44, 0, 255, 0}}));
  EXPECT_EQ(entry.getGeneralInfo().bridge_port_number, 4464);
  EXPECT_EQ(entry.getPhysicalInfo().intf_mtu, 4294967295U);
  EXPECT_EQ(ToMessage(entry).generalinfo().bridge_port_number(), 4464U);
}

TEST(IntfEntryConverter, NativeToMessage_TheMtuKeepsItsLow32Bits) {
  // 2^32 + 1500.
  EXPECT_EQ(OtherEntry().getPhysicalInfo().intf_mtu, 4294968796U);
  EXPECT_EQ(ToMessage(OtherEntry()).physicalinfo().intf_mtu(), 1500U);
}

TEST(IntfEntryConverter, ShutdownProtocolsKeepTheirOrderAndDuplicates) {
  pb::IntfEntry message = FullEntryMessage();
  message.clear_shutdownprotos();
  for (const auto protocol : {pb::STP, pb::STP, pb::L1_PROTO}) message.add_shutdownprotos(protocol);
  const IntfEntry entry = ToNative(message);
  EXPECT_THAT(entry.getShutdownProtos(), ElementsAre(3, 3, 9));
  EXPECT_THAT(ToMessage(entry).shutdownprotos(), ElementsAre(pb::STP, pb::STP, pb::L1_PROTO));
}

TEST(IntfEntryConverter, EveryProtocolSurvivesInBothLists) {
  pb::IntfEntry message = FullEntryMessage();
  message.clear_shutdownprotos();
  message.clear_blockinfo();
  for (int number = 0; number <= 12; ++number) {
    message.add_shutdownprotos(static_cast<pb::ProtocolType>(number));
    pb::BlockInfo& block = *message.add_blockinfo();
    block.set_protocol(static_cast<pb::ProtocolType>(number));
    block.set_state(number % 2 == 0 ? pb::BLOCK_STATE_BLOCK : pb::BLOCK_STATE_FORWARD);
  }
  const IntfEntry entry = ToNative(message);
  EXPECT_THAT(entry.getShutdownProtos(), ElementsAre(12, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
  EXPECT_EQ(entry.getBlockInfo().front().protocol, PROTOCOL_UNKNOWN);
  EXPECT_EQ(entry.getBlockInfo().back().protocol, BACKUPLINK);
  EXPECT_THAT(ToMessage(entry), EqualsMessage(message));
}

TEST(IntfEntryConverter, NativeToMessage_AnUnlistedProtocolOrStateBecomesUnknownOrForwarding) {
  for (const std::int32_t number : zorl2_test::NumbersOutside(13)) {
    IntfEntryBuilder builder;
    builder.addShutdownProto(static_cast<ProtocolType>(number))
        .addBlockInfo({static_cast<ProtocolType>(number), static_cast<BlockState>(number)});
    const pb::IntfEntry message = ToMessage(builder.Build());
    EXPECT_THAT(message.shutdownprotos(), ElementsAre(pb::PROTOCOL_UNKNOWN)) << number;
    EXPECT_THAT(message.blockinfo(0),
                EqualsText<pb::BlockInfo>("protocol: PROTOCOL_UNKNOWN state: BLOCK_STATE_FORWARD"));
  }
}

TEST(IntfEntryConverter, MessageToNative_ReplacesTheListsAlsoByEmptyOnes) {
  pb::IntfEntry message = FullEntryMessage();
  EXPECT_EQ(OtherEntry().getShutdownProtos().size(), 3U);
  EXPECT_EQ(OtherEntry().getBlockInfo().size(), 2U);
  message.clear_shutdownprotos();
  message.clear_blockinfo();
  const IntfEntry entry = ToNative(message);
  EXPECT_THAT(entry.getShutdownProtos(), IsEmpty());
  EXPECT_THAT(entry.getBlockInfo(), IsEmpty());
}

TEST(IntfEntryConverter, EveryCategorySurvivesInBothDirections) {
  for (int number = 0; number <= 4; ++number) {
    pb::IntfEntry message = FullEntryMessage();
    message.set_intfcategory(static_cast<pb::InterfaceCategory>(number));
    const IntfEntry entry = ToNative(message);
    EXPECT_EQ(entry.getInterfaceCategory(), number);
    EXPECT_EQ(ToMessage(entry).intfcategory(), number);
  }
}

TEST(IntfEntryConverter, MessageToNative_DropsUnknownFields) {
  pb::IntfEntry message = FullEntryMessage();
  message.mutable_unknown_fields()->AddVarint(99, 1);
  message.mutable_typeinfo()->mutable_unknown_fields()->AddLengthDelimited(98, "x");
  EXPECT_THAT(ToMessage(ToNative(message)), EqualsMessage(FullEntryMessage()));
}

TEST(IntfEntryConverter, TheCallersObjectsAreOnlyRead) {
  const pb::IntfEntry message = FullEntryMessage();
  const IntfEntry entry = ToNative(message);
  EXPECT_THAT(message, EqualsMessage(FullEntryMessage()));
  ToMessage(entry);
  EXPECT_THAT(entry, EqualsNative(FullEntry()));
}

TEST(IntfEntryConverter, OneConverterServesBothDirectionsAnyNumberOfTimes) {
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

}  // namespace
