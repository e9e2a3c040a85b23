// The fourteen functions that translate the enumerations nested in the interface entry.
#include <google/protobuf/generated_enum_reflection.h>
#include <gtest/gtest.h>

#include <boost/exception/exception.hpp>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/exceptions.h"

namespace pb = zorl2::protobuf;

using zorl2_test::ExpectInvalidKey;
using zorl2_test::NumbersOutside;

namespace {

// Callers store pointers to these functions. The types of the parameters reject a function that is
// static, const, virtual or overloaded.
template <auto kToNative, auto kToMessage, int kCount>
struct Row;
template <typename Message, typename Native,
          bool (IntfEntryConvertHelperProtobuf::*kToNative)(const Message&, Native&),
          void (IntfEntryConvertHelperZOR::*kToMessage)(const Native&, Message&), int kCount>
struct Row<kToNative, kToMessage, kCount> {
  using MessageEnum = Message;
  using NativeEnum = Native;
  static constexpr int kValues = kCount;
  static Native ToNative(int value, int before = 0) {
    auto native = static_cast<Native>(before);
    EXPECT_TRUE((IntfEntryConvertHelperProtobuf().*kToNative)(static_cast<Message>(value), native));
    return native;
  }
  static Message ToMessage(int value) {
    auto message = static_cast<Message>(77);
    (IntfEntryConvertHelperZOR().*kToMessage)(static_cast<Native>(value), message);
    return message;
  }
  static constexpr auto kReader = kToNative;
  static constexpr auto kWriter = kToMessage;
};

using In = IntfEntryConvertHelperProtobuf;
using Out = IntfEntryConvertHelperZOR;
using AdminStatusRow = Row<&In::ConvertAdminStatus, &Out::ConvertAdminStatus, 2>;
using OperationalStatusRow = Row<&In::ConvertOperationalStatus, &Out::ConvertOperationalStatus, 2>;
using LinkStatusRow = Row<&In::ConvertLinkStatus, &Out::ConvertLinkStatus, 2>;
using EthernetSpeedRow = Row<&In::ConvertEthernetSpeed, &Out::ConvertEthernetSpeed, 12>;
using DuplexModeRow = Row<&In::ConvertDuplexMode, &Out::ConvertDuplexMode, 3>;
using InterfaceTypeRow = Row<&In::ConvertInterfaceType, &Out::ConvertInterfaceType, 5>;
using VlanTypeRow = Row<&In::ConvertVlanType, &Out::ConvertVlanType, 5>;

template <typename Row>
class NestedEnum : public testing::Test {};
using Rows = testing::Types<AdminStatusRow, OperationalStatusRow, LinkStatusRow, EthernetSpeedRow,
                            DuplexModeRow, InterfaceTypeRow, VlanTypeRow>;
TYPED_TEST_SUITE(NestedEnum, Rows);

// Compares numbers; l2_enums_test and the released schema check the number of each name.
TYPED_TEST(NestedEnum, EveryListedValueHasTheSameNumberOnBothSides) {
  const auto* descriptor = google::protobuf::GetEnumDescriptor<typename TypeParam::MessageEnum>();
  ASSERT_EQ(descriptor->value_count(), TypeParam::kValues);
  for (int value = 0; value < TypeParam::kValues; ++value) {
    ASSERT_NE(descriptor->FindValueByNumber(value), nullptr);
    EXPECT_EQ(TypeParam::ToNative(value, 77), value);
    EXPECT_EQ(TypeParam::ToMessage(value), value);
  }
}

TYPED_TEST(NestedEnum, AnUnlistedValueThrowsAndLeavesTheOutputUnchanged) {
  for (const std::int32_t value : NumbersOutside(TypeParam::kValues)) {
    SCOPED_TRACE(value);
    auto native = static_cast<typename TypeParam::NativeEnum>(77);
    ExpectInvalidKey([&] {
      (In().*TypeParam::kReader)(static_cast<typename TypeParam::MessageEnum>(value), native);
    });
    EXPECT_EQ(native, 77);
    auto message = static_cast<typename TypeParam::MessageEnum>(77);
    ExpectInvalidKey([&] {
      (Out().*TypeParam::kWriter)(static_cast<typename TypeParam::NativeEnum>(value), message);
    });
    EXPECT_EQ(message, 77);
  }
}

TEST(NestedEnums, TheExceptionIsAnOutOfRangeAndABoostException) {
  EXPECT_THROW(VlanTypeRow::ToNative(5), std::out_of_range);
  EXPECT_THROW(VlanTypeRow::ToNative(5), boost::exception);
}

}  // namespace
