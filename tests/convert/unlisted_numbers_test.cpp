// Messages that hold numbers which their enumerations do not list, on their way into a record.
// Parsing never stores such a number, and the generated setters refuse it where assertions are on,
// so this file is compiled without them; the library keeps its own.
#ifndef NDEBUG
#error "this file must be compiled without assertions"
#endif

#include <gmock/gmock.h>

#include <cstdint>

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_converter.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"
#include "tests/support/message_matchers.h"
#include "tests/support/native_entry.h"

namespace pb = zorl2::protobuf;

using testing::ElementsAre;
using zorl2_test::EqualsNative;
using zorl2_test::ExpectInvalidKey;
using zorl2_test::ExpectMapAt;
using zorl2_test::FromText;
using zorl2_test::FullEntryMessage;
using zorl2_test::NumbersOutside;
using zorl2_test::OtherEntry;

namespace {

template <typename Enum>
Enum Unlisted() {
  return static_cast<Enum>(99);
}

// The record as it is after a refusal, starting from the one given.
template <auto kConvert, typename Proto, typename Record>
Record LeftBehind(const Proto& message, Record record) {
  EXPECT_TRUE(message.IsInitialized());
  IntfEntryConvertHelperProtobuf helper;
  ExpectInvalidKey([&] { (helper.*kConvert)(message, record); });
  return record;
}

TEST(UnlistedNumbers, AStatusLeavesTheStatesBeforeItWritten) {
  constexpr auto kConvert = &IntfEntryConvertHelperProtobuf::ConvertStatusInfo;
  const auto full = FromText<pb::StatusInfo>(zorl2_test::kFullStatusInfoText);
  const IntfEntry::StatusInfo before = OtherEntry().getStatusInfo();
  pb::StatusInfo message = full;
  message.set_adminstatus(Unlisted<pb::AdminStatus>());
  EXPECT_THAT(LeftBehind<kConvert>(message, before), EqualsNative(before));
  message = full;
  message.set_operationalstatus(Unlisted<pb::OperationalStatus>());
  IntfEntry::StatusInfo expected = before;
  expected.adminStatus = IntfEntry::IF_ADMIN_DOWN;
  EXPECT_THAT(LeftBehind<kConvert>(message, before), EqualsNative(expected));
  message = full;
  message.set_linkstatus(Unlisted<pb::LinkStatus>());
  expected.operationalStatus = IntfEntry::DOWN;
  EXPECT_THAT(LeftBehind<kConvert>(message, before), EqualsNative(expected));
}

TEST(UnlistedNumbers, ASpeedOrDuplexModeLeavesThePhysicalMembersBeforeItWritten) {
  constexpr auto kConvert = &IntfEntryConvertHelperProtobuf::ConvertPhysicalInfo;
  const auto full = FromText<pb::PhysicalInfo>(zorl2_test::kFullPhysicalInfoText);
  const IntfEntry::PhysicalInfo before = OtherEntry().getPhysicalInfo();
  pb::PhysicalInfo message = full;
  message.set_eth_speed(Unlisted<pb::EthernetSpeed>());
  IntfEntry::PhysicalInfo expected = before;
  expected.intf_mtu = 9216;
  EXPECT_THAT(LeftBehind<kConvert>(message, before), EqualsNative(expected));
  message = full;
  message.set_eth_duplex_mode(Unlisted<pb::EthernetDuplexMode>());
  expected.eth_speed = IntfEntry::SPEED_25_GBS;
  EXPECT_THAT(LeftBehind<kConvert>(message, before), EqualsNative(expected));
}

TEST(UnlistedNumbers, ATypeLeavesTheTypeMembersBeforeItWritten) {
  constexpr auto kConvert = &IntfEntryConvertHelperProtobuf::ConvertTypeInfo;
  const auto full = FromText<pb::TypeInfo>(zorl2_test::kFullTypeInfoText);
  const IntfEntry::TypeInfo before = OtherEntry().getTypeInfo();
  pb::TypeInfo message = full;
  message.set_interfacetype(Unlisted<pb::InterfaceType>());
  EXPECT_THAT(LeftBehind<kConvert>(message, before), EqualsNative(before));
  message = full;
  message.set_vlantype(Unlisted<pb::VlanType>());
  IntfEntry::TypeInfo expected = zorl2_test::FullTypeInfo();
  expected.vlanType = before.vlanType;
  EXPECT_THAT(LeftBehind<kConvert>(message, before), EqualsNative(expected));
}

TEST(UnlistedNumbers, ABlockEntryIsNeverRefused) {
  for (const std::int32_t number : NumbersOutside(13)) {
    pb::BlockInfo message;
    message.set_protocol(static_cast<pb::ProtocolType>(number));
    message.set_state(static_cast<pb::BlockState>(number));
    IntfEntry::BlockInfo block = {STP, BLOCK_STATE_BLOCK};
    EXPECT_TRUE(IntfEntryConvertHelperProtobuf().ConvertBlockInfo(message, block));
    EXPECT_THAT(block, EqualsNative(IntfEntry::BlockInfo{PROTOCOL_UNKNOWN, BLOCK_STATE_FORWARD}))
        << number;
  }
}

// Every enumeration of the entry with every number around it: the entry is exactly as it was,
// its lists included.
template <typename Set>
void ExpectRefusedAndUntouched(std::int32_t count, const Set& set) {
  for (const std::int32_t number : NumbersOutside(count)) {
    pb::IntfEntry message = FullEntryMessage();
    set(message, number);
    ASSERT_TRUE(message.IsInitialized());
    IntfEntry entry = OtherEntry();
    ExpectInvalidKey([&] { IntfEntryConverter().Convert(message, entry); });
    EXPECT_THAT(entry, EqualsNative(OtherEntry())) << number;
  }
}

TEST(UnlistedNumbers, AnEntryIsRefusedForEachNestedEnumerationAndTheRecordIsAsItWas) {
  ExpectRefusedAndUntouched(2, [](auto& message, int number) {
    message.mutable_statusinfo()->set_adminstatus(static_cast<pb::AdminStatus>(number));
  });
  ExpectRefusedAndUntouched(2, [](auto& message, int number) {
    message.mutable_statusinfo()->set_operationalstatus(static_cast<pb::OperationalStatus>(number));
  });
  ExpectRefusedAndUntouched(2, [](auto& message, int number) {
    message.mutable_statusinfo()->set_linkstatus(static_cast<pb::LinkStatus>(number));
  });
  ExpectRefusedAndUntouched(12, [](auto& message, int number) {
    message.mutable_physicalinfo()->set_eth_speed(static_cast<pb::EthernetSpeed>(number));
  });
  ExpectRefusedAndUntouched(3, [](auto& message, int number) {
    message.mutable_physicalinfo()->set_eth_duplex_mode(
        static_cast<pb::EthernetDuplexMode>(number));
  });
  ExpectRefusedAndUntouched(5, [](auto& message, int number) {
    message.mutable_typeinfo()->set_interfacetype(static_cast<pb::InterfaceType>(number));
  });
  ExpectRefusedAndUntouched(5, [](auto& message, int number) {
    message.mutable_typeinfo()->set_vlantype(static_cast<pb::VlanType>(number));
  });
}

TEST(UnlistedNumbers, AnEntryIsRefusedForItsCategoryAndTheRecordIsAsItWas) {
  for (const std::int32_t number : NumbersOutside(5)) {
    pb::IntfEntry message = FullEntryMessage();
    message.set_intfcategory(static_cast<pb::InterfaceCategory>(number));
    IntfEntry entry = OtherEntry();
    ExpectMapAt([&] { IntfEntryConverter().Convert(message, entry); });
    EXPECT_THAT(entry, EqualsNative(OtherEntry())) << number;
  }
}

TEST(UnlistedNumbers, AShutdownProtocolBecomesUnknown) {
  for (const std::int32_t number : NumbersOutside(13)) {
    pb::IntfEntry message = FullEntryMessage();
    message.set_shutdownprotos(1, static_cast<pb::ProtocolType>(number));
    IntfEntry entry = OtherEntry();
    EXPECT_TRUE(IntfEntryConverter().Convert(message, entry));
    EXPECT_THAT(entry.getShutdownProtos(), ElementsAre(LACP, PROTOCOL_UNKNOWN, LACP)) << number;
  }
}

}  // namespace
