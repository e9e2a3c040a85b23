#include "convert/info_client_config_converter.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <set>
#include <string>

#include "tests/convert/conversions.h"
#include "tests/support/enum_numbers.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

namespace {

using testing::ElementsAre;
using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::EqualsText;
using zorl2_test::NumbersOutside;

// Every combination of the five flags is a number from 0 to 31, L1 its lowest bit.
constexpr unsigned kCombinations = 32;

std::set<InterfaceCategory> CategoriesOf(unsigned bits) {
  std::set<InterfaceCategory> categories;
  if (bits & 1) categories.insert(L1);
  if (bits & 2) categories.insert(L2);
  if (bits & 4) categories.insert(VP);
  if (bits & 8) categories.insert(L2_SUB_IF);
  if (bits & 16) categories.insert(VIRTUAL_IF);
  return categories;
}

pb::InformationClient Message(unsigned bits) {
  pb::InformationClient message;
  message.set_clientaddress(0x1122334455667788);
  message.set_protocoltype(pb::LACP);
  pb::IntfCategory& flags = *message.mutable_intfcategory();
  flags.set_l1((bits & 1) != 0);
  flags.set_l2((bits & 2) != 0);
  flags.set_vp((bits & 4) != 0);
  flags.set_l2_sub_if((bits & 8) != 0);
  flags.set_virtual_if((bits & 16) != 0);
  message.set_token("north");
  return message;
}

// The record of Message().
ZORL2InfoClientConfig Record(unsigned bits) {
  return {LACP, CategoriesOf(bits), 0x1122334455667788, "north"};
}

// Shares no value with Message().
ZORL2InfoClientConfig Held() { return {ERPS, {L2_SUB_IF}, 0x99AABBCCDDEEFF00, "south"}; }

ZORL2InfoClientConfig ToNative(const pb::InformationClient& message, ZORL2InfoClientConfig config) {
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(message, config));
  return config;
}

pb::InformationClient ToMessage(const ZORL2InfoClientConfig& config) {
  pb::InformationClient message = Message(31);
  zorl2_test::AddUnknownField(message);
  zorl2_test::AddUnknownField(*message.mutable_intfcategory());
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(config, message));
  return message;
}

// Address, protocol and token are overwritten, the set becomes the union.
TEST(InfoClientConfig, MessageToNative_AddsEachCombinationOfFlagsToEachSet) {
  for (unsigned held = 0; held < kCombinations; ++held) {
    for (unsigned bits = 0; bits < kCombinations; ++bits) {
      ZORL2InfoClientConfig config = Held();
      config.interfaceCategories = CategoriesOf(held);
      ASSERT_THAT(ToNative(Message(bits), config), EqualsNative(Record(held | bits)));
    }
  }
}

TEST(InfoClientConfig, MessageToNative_ElementsThatAreNoCategoryRemainInTheSet) {
  ZORL2InfoClientConfig config = Held();
  config.interfaceCategories = {static_cast<InterfaceCategory>(-1),
                                static_cast<InterfaceCategory>(5)};
  EXPECT_THAT(ToNative(Message(2), config).interfaceCategories, ElementsAre(-1, L2, 5));
}

TEST(InfoClientConfig, MessageToNative_AMissingFieldOrFlagLeavesTheRecordUnchanged) {
  const auto paths = zorl2_test::RequiredFields(Message(31));
  // Four fields and five flags.
  ASSERT_EQ(paths.size(), 9U);
  for (const auto& path : paths) {
    SCOPED_TRACE(path.Name());
    pb::InformationClient message = Message(31);
    zorl2_test::RemoveField(path, message);
    zorl2_test::ExpectRejected<ZORL2InfoClientConfigConverter>(message, Held());
  }
}

TEST(InfoClientConfig, NativeToMessage_ReplacesTheMessageAndSetsAllFiveFlags) {
  for (unsigned bits = 0; bits < kCombinations; ++bits) {
    EXPECT_THAT(ToMessage(Record(bits)), EqualsMessage(Message(bits)));
  }
}

TEST(InfoClientConfig, NativeToMessage_SetsEveryFieldOfADefaultRecord) {
  EXPECT_THAT(ToMessage(ZORL2InfoClientConfig{}),
              EqualsText<pb::InformationClient>(
                  "clientAddress: 0 protocolType: LLDP token: '' intfCategory {"
                  " L1: false L2: false VP: false L2_SUB_IF: false VIRTUAL_IF: false }"));
}

TEST(InfoClientConfig, NativeToMessage_OmitsElementsThatAreNoCategory) {
  ZORL2InfoClientConfig config = Record(4);
  for (const std::int32_t number : NumbersOutside(5)) {
    config.interfaceCategories.insert(static_cast<InterfaceCategory>(number));
  }
  EXPECT_THAT(ToMessage(config), EqualsMessage(Message(4)));
}

// L1_PROTO and L2_PROTO among them.
TEST(InfoClientConfig, RoundTrip_TranslatesEveryProtocol) {
  constexpr int kMessageNumbers[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0};
  for (int native = 0; native <= 12; ++native) {
    ZORL2InfoClientConfig config = Held();
    config.protocolType = static_cast<ProtocolType>(native);
    const pb::InformationClient message = ToMessage(config);
    EXPECT_EQ(message.protocoltype(), kMessageNumbers[native]);
    EXPECT_EQ(ToNative(message, Held()).protocolType, native);
  }
}

TEST(InfoClientConfig, AnUnlistedProtocolBecomesTheUnknownProtocol) {
  for (const std::int32_t number : NumbersOutside(13)) {
    ZORL2InfoClientConfig config = Held();
    config.protocolType = static_cast<ProtocolType>(number);
    EXPECT_EQ(ToMessage(config).protocoltype(), pb::PROTOCOL_UNKNOWN) << number;
    pb::InformationClient message = Message(1);
    message.set_protocoltype(static_cast<pb::ProtocolType>(number));
    EXPECT_EQ(ToNative(message, Held()).protocolType, PROTOCOL_UNKNOWN) << number;
  }
}

TEST(InfoClientConfig, RoundTrip_PreservesEveryBitOfAddressAndToken) {
  const std::string tokens[] = {std::string("\0a\0\0b\0", 6), "", std::string(100000, 'x') + '\0'};
  for (const std::string& token : tokens) {
    for (const std::uint64_t address : {~std::uint64_t{0}, std::uint64_t{1} << 63}) {
      const ZORL2InfoClientConfig config{CFM, {VP}, address, token};
      const pb::InformationClient message = ToMessage(config);
      EXPECT_EQ(message.clientaddress(), address);
      EXPECT_EQ(message.token(), token);
      EXPECT_THAT(ToNative(message, {ERPS, {}, 1, "south"}), EqualsNative(config));
    }
  }
}

}  // namespace
