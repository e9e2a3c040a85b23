// The fourteen functions that translate the enumerations nested in the interface entry.
#include <google/protobuf/generated_enum_reflection.h>
#include <gtest/gtest.h>

#include <boost/exception/exception.hpp>
#include <cstdint>
#include <stdexcept>
#include <type_traits>

#include "tests/convert/enum_rows.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"

namespace pb = zorl2::protobuf;

using zorl2_test::ExpectInvalidKey;
using zorl2_test::NumbersOutside;

namespace {

template <typename Row>
class NestedEnum : public testing::Test {
 protected:
  using Message = typename Row::Message;
  using Native = typename Row::Native;

  // Outputs start from a number that is no member, so that an output that is not written shows.
  static constexpr std::int32_t kBefore = 77;

  static void ToNative(Message message, Native& native) {
    IntfEntryConvertHelperProtobuf helper;
    EXPECT_TRUE((helper.*Row::kToNative)(message, native));
  }
  static void ToMessage(Native native, Message& message) {
    IntfEntryConvertHelperZOR helper;
    (helper.*Row::kToMessage)(native, message);
  }
};
TYPED_TEST_SUITE(NestedEnum, zorl2_test::EnumRows);

TYPED_TEST(NestedEnum, TheMessageEnumerationHasTheMembersExpectedHere) {
  const auto* descriptor = google::protobuf::GetEnumDescriptor<typename TypeParam::Message>();
  ASSERT_EQ(descriptor->value_count(), TypeParam::kCount);
  for (int i = 0; i < TypeParam::kCount; ++i) EXPECT_EQ(descriptor->value(i)->number(), i);
}

TYPED_TEST(NestedEnum, EveryMemberIsTheSameNumberOnBothSides) {
  for (std::int32_t number = 0; number < TypeParam::kCount; ++number) {
    auto native = static_cast<typename TypeParam::Native>(this->kBefore);
    this->ToNative(static_cast<typename TypeParam::Message>(number), native);
    EXPECT_EQ(native, number);
    auto message = static_cast<typename TypeParam::Message>(this->kBefore);
    this->ToMessage(native, message);
    EXPECT_EQ(message, number);
  }
}

TYPED_TEST(NestedEnum, MessageToNative_EveryOtherNumberThrowsAndLeavesTheOutput) {
  for (const std::int32_t number : NumbersOutside(TypeParam::kCount)) {
    SCOPED_TRACE(number);
    auto native = static_cast<typename TypeParam::Native>(this->kBefore);
    ExpectInvalidKey(
        [&] { this->ToNative(static_cast<typename TypeParam::Message>(number), native); });
    EXPECT_EQ(native, this->kBefore);
  }
}

TYPED_TEST(NestedEnum, NativeToMessage_EveryOtherNumberThrowsAndLeavesTheOutput) {
  for (const std::int32_t number : NumbersOutside(TypeParam::kCount)) {
    SCOPED_TRACE(number);
    auto message = static_cast<typename TypeParam::Message>(this->kBefore);
    ExpectInvalidKey(
        [&] { this->ToMessage(static_cast<typename TypeParam::Native>(number), message); });
    EXPECT_EQ(message, this->kBefore);
  }
}

// A caller may catch it under either of its bases.
TYPED_TEST(NestedEnum, TheRefusalIsAnOutOfRangeAndABoostException) {
  auto native = static_cast<typename TypeParam::Native>(this->kBefore);
  const auto refused = static_cast<typename TypeParam::Message>(-1);
  EXPECT_THROW(this->ToNative(refused, native), std::out_of_range);
  EXPECT_THROW(this->ToNative(refused, native), boost::exception);
  EXPECT_THROW(this->ToNative(refused, native), boost::wrapexcept<std::out_of_range>);
}

// By name, so that a pair of members in the wrong order is seen.
TEST(NestedEnums, MembersAreTranslatedByName) {
  IntfEntryConvertHelperProtobuf reader;
  IntfEntryConvertHelperZOR writer;
  IntfEntry::AdminStatus admin{};
  EXPECT_TRUE(reader.ConvertAdminStatus(pb::IF_ADMIN_DOWN, admin));
  EXPECT_EQ(admin, IntfEntry::IF_ADMIN_DOWN);
  IntfEntry::EthernetSpeed speed{};
  EXPECT_TRUE(reader.ConvertEthernetSpeed(pb::SPEED_40_GBS, speed));
  EXPECT_EQ(speed, IntfEntry::SPEED_40_GBS);
  IntfEntry::InterfaceType type{};
  EXPECT_TRUE(reader.ConvertInterfaceType(pb::ETHERNET_L2_VLAN, type));
  EXPECT_EQ(type, IntfEntry::ETHERNET_L2_VLAN);
  pb::VlanType vlan{};
  writer.ConvertVlanType(IntfEntry::B_VLAN, vlan);
  EXPECT_EQ(vlan, pb::B_VLAN);
  pb::EthernetDuplexMode duplex{};
  writer.ConvertDuplexMode(IntfEntry::FULL, duplex);
  EXPECT_EQ(duplex, pb::FULL);
}

TEST(NestedEnums, TheFunctionsHaveTheirExactTypes) {
  static_assert(std::is_same_v<decltype(&IntfEntryConvertHelperProtobuf::ConvertDuplexMode),
                               bool (IntfEntryConvertHelperProtobuf::*)(
                                   const pb::EthernetDuplexMode&, IntfEntry::EthernetDuplexMode&)>);
  static_assert(std::is_same_v<decltype(&IntfEntryConvertHelperZOR::ConvertDuplexMode),
                               void (IntfEntryConvertHelperZOR::*)(
                                   const IntfEntry::EthernetDuplexMode&, pb::EthernetDuplexMode&)>);
  static_assert(std::is_empty_v<IntfEntryConvertHelperProtobuf>);
  static_assert(std::is_empty_v<IntfEntryConvertHelperZOR>);
}

}  // namespace
