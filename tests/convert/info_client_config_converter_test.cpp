#include "convert/info_client_config_converter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "tests/state/signals.h"
#include "tests/support/message_matchers.h"
#include "tests/support/required_fields.h"

namespace pb = zorl2::protobuf;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zorl2_test::AddUnknownField;
using zorl2_test::EqualsText;
using zorl2_test::FromText;
using zorl2_test::kUnlisted;
using zorl2_test::Number;

using Categories = std::set<InterfaceCategory>;

constexpr std::uint64_t kAllBits = 0xFFFFFFFFFFFFFFFF;

// Every combination of the five flags is a number from 0 to 31, L1 its lowest bit.
constexpr unsigned kCombinations = 32;

Categories CategoriesOf(unsigned bits) {
  Categories categories;
  if (bits & 1) categories.insert(L1);
  if (bits & 2) categories.insert(L2);
  if (bits & 4) categories.insert(VP);
  if (bits & 8) categories.insert(L2_SUB_IF);
  if (bits & 16) categories.insert(VIRTUAL_IF);
  return categories;
}

void SetFlags(unsigned bits, pb::IntfCategory& flags) {
  flags.set_l1((bits & 1) != 0);
  flags.set_l2((bits & 2) != 0);
  flags.set_vp((bits & 4) != 0);
  flags.set_l2_sub_if((bits & 8) != 0);
  flags.set_virtual_if((bits & 16) != 0);
}

pb::InformationClient Message(unsigned bits) {
  pb::InformationClient message;
  message.set_clientaddress(0x1122334455667788);
  message.set_protocoltype(pb::LACP);
  SetFlags(bits, *message.mutable_intfcategory());
  message.set_token("north");
  return message;
}

// No member at its default.
ZORL2InfoClientConfig HeldConfig() { return {ERPS, {L2_SUB_IF}, 0x99AABBCCDDEEFF00, "south"}; }

void ExpectHeld(const ZORL2InfoClientConfig& config) {
  EXPECT_EQ(config.protocolType, ERPS);
  EXPECT_THAT(config.interfaceCategories, ElementsAre(L2_SUB_IF));
  EXPECT_EQ(config.clientAddress, 0x99AABBCCDDEEFF00);
  EXPECT_EQ(config.token, "south");
}

TEST(InfoClientConfig, MessageToNative_OverwritesAddressProtocolAndToken) {
  ZORL2InfoClientConfig config = HeldConfig();
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(Message(1 | 4), config));
  EXPECT_EQ(config.clientAddress, 0x1122334455667788u);
  EXPECT_EQ(config.protocolType, LACP);
  EXPECT_EQ(config.token, "north");
  EXPECT_THAT(config.interfaceCategories, ElementsAre(L1, VP, L2_SUB_IF));
}

TEST(InfoClientConfig, MessageToNative_FalseFlagsTakeNoCategoryAway) {
  ZORL2InfoClientConfig config;
  config.interfaceCategories = {L2};
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(Message(0), config));
  EXPECT_THAT(config.interfaceCategories, ElementsAre(L2));
}

TEST(InfoClientConfig, MessageToNative_EachFlagCombinationIsAddedToEachSet) {
  for (unsigned held = 0; held < kCombinations; ++held) {
    for (unsigned bits = 0; bits < kCombinations; ++bits) {
      ZORL2InfoClientConfig config;
      config.interfaceCategories = CategoriesOf(held);
      ASSERT_TRUE(ZORL2InfoClientConfigConverter().Convert(Message(bits), config));
      ASSERT_EQ(config.interfaceCategories, CategoriesOf(held | bits)) << held << ' ' << bits;
    }
  }
}

TEST(InfoClientConfig, MessageToNative_ElementsThatAreNoCategoryStayInTheSet) {
  ZORL2InfoClientConfig config;
  config.interfaceCategories = {Number<InterfaceCategory>(-1), Number<InterfaceCategory>(5)};
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(Message(2), config));
  EXPECT_THAT(config.interfaceCategories,
              ElementsAre(Number<InterfaceCategory>(-1), L2, Number<InterfaceCategory>(5)));
}

TEST(InfoClientConfig, MessageToNative_AMissingFieldLeavesTheRecordAsItWas) {
  const pb::InformationClient full = Message(31);
  const auto paths = zorl2_test::RequiredFields(full);
  // Four fields and the five flags inside one of them.
  ASSERT_EQ(paths.size(), 9u);
  for (const auto& path : paths) {
    SCOPED_TRACE(path.Name());
    pb::InformationClient message = full;
    zorl2_test::RemoveField(path, message);
    ZORL2InfoClientConfig config = HeldConfig();
    EXPECT_FALSE(ZORL2InfoClientConfigConverter().Convert(message, config));
    ExpectHeld(config);
  }
}

TEST(InfoClientConfig, NativeToMessage_EachSetBecomesItsFiveFlags) {
  for (unsigned bits = 0; bits < kCombinations; ++bits) {
    ZORL2InfoClientConfig config = HeldConfig();
    config.interfaceCategories = CategoriesOf(bits);
    pb::InformationClient message;
    ASSERT_TRUE(ZORL2InfoClientConfigConverter().Convert(config, message));
    ASSERT_TRUE(message.IsInitialized()) << message.InitializationErrorString();
    pb::IntfCategory expected;
    SetFlags(bits, expected);
    EXPECT_THAT(message.intfcategory(), zorl2_test::EqualsMessage(expected)) << bits;
  }
}

TEST(InfoClientConfig, NativeToMessage_SetsEveryFieldAndFlagOfADefaultRecordToo) {
  pb::InformationClient message;
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(ZORL2InfoClientConfig(), message));
  EXPECT_THAT(message, EqualsText<pb::InformationClient>(
                           "clientAddress: 0 protocolType: LLDP token: '' intfCategory {"
                           " L1: false L2: false VP: false L2_SUB_IF: false VIRTUAL_IF: false }"));
}

TEST(InfoClientConfig, NativeToMessage_NothingThatTheMessageHeldSurvives) {
  pb::InformationClient message = Message(31);
  AddUnknownField(message);
  AddUnknownField(*message.mutable_intfcategory());
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(HeldConfig(), message));
  EXPECT_THAT(message, EqualsText<pb::InformationClient>(
                           "clientAddress: 0x99AABBCCDDEEFF00 protocolType: ERPS token: 'south'"
                           " intfCategory { L1: false L2: false VP: false L2_SUB_IF: true"
                           " VIRTUAL_IF: false }"));
}

TEST(InfoClientConfig, NativeToMessage_ElementsThatAreNoCategoryAreLeftOut) {
  ZORL2InfoClientConfig config = HeldConfig();
  config.interfaceCategories = {VP, Number<InterfaceCategory>(5)};
  for (const std::int32_t number : kUnlisted) {
    config.interfaceCategories.insert(Number<InterfaceCategory>(number));
  }
  pb::InformationClient message;
  EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(config, message));
  EXPECT_THAT(message.intfcategory(),
              EqualsText<pb::IntfCategory>(
                  "L1: false L2: false VP: true L2_SUB_IF: false VIRTUAL_IF: false"));
}

// Native number beside message number: all thirteen, none refused.
TEST(InfoClientConfig, EveryProtocolGoesThereAndBack) {
  constexpr int kMessageNumbers[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0};
  for (std::int32_t native = 0; native <= 12; ++native) {
    ZORL2InfoClientConfig config = HeldConfig();
    config.protocolType = Number<ProtocolType>(native);
    pb::InformationClient message;
    EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(config, message));
    EXPECT_EQ(message.protocoltype(), kMessageNumbers[native]) << native;
    config.protocolType = Number<ProtocolType>(99);
    EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(message, config));
    EXPECT_EQ(config.protocolType, native);
  }
}

TEST(InfoClientConfig, NativeToMessage_ANumberOutsideTheProtocolsIsUnknown) {
  for (const std::int32_t number : kUnlisted) {
    ZORL2InfoClientConfig config = HeldConfig();
    config.protocolType = Number<ProtocolType>(number);
    pb::InformationClient message;
    EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(config, message));
    EXPECT_TRUE(message.has_protocoltype());
    EXPECT_EQ(message.protocoltype(), pb::PROTOCOL_UNKNOWN) << number;
  }
}

TEST(InfoClientConfig, AddressAndTokenAreCarriedUnchanged) {
  const std::string tokens[] = {std::string("\0a\0\0b\0", 6), std::string(1, '\0'), "",
                                std::string(100000, 'x') + '\0'};
  for (const std::string& token : tokens) {
    for (const std::uint64_t address : {kAllBits, std::uint64_t{1} << 63, std::uint64_t{0}}) {
      ZORL2InfoClientConfig config;
      config.clientAddress = address;
      config.token = token;
      pb::InformationClient message;
      EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(config, message));
      EXPECT_EQ(message.clientaddress(), address);
      EXPECT_EQ(message.token(), token);
      pb::InformationClient received;
      ASSERT_TRUE(received.ParseFromString(message.SerializeAsString()));
      ZORL2InfoClientConfig back = HeldConfig();
      EXPECT_TRUE(ZORL2InfoClientConfigConverter().Convert(received, back));
      EXPECT_EQ(back.clientAddress, address);
      EXPECT_EQ(back.token, token);
    }
  }
}

TEST(InfoClientConfig, TheConverterIsReachedThroughItsBaseAndKnowsItsType) {
  using Base = Converter<pb::InformationClient, ZORL2InfoClientConfig>;
  const std::unique_ptr<Base> base = std::make_unique<ZORL2InfoClientConfigConverter>();
  EXPECT_NE(dynamic_cast<ZORL2InfoClientConfigConverter*>(base.get()), nullptr);
  const Base& reached = *base;
  EXPECT_EQ(typeid(reached), typeid(ZORL2InfoClientConfigConverter));
  ZORL2InfoClientConfig config;
  EXPECT_TRUE(base->Convert(Message(16), config));
  EXPECT_THAT(config.interfaceCategories, ElementsAre(VIRTUAL_IF));
  EXPECT_EQ(sizeof(ZORL2InfoClientConfigConverter), sizeof(void*));
}

TEST(InfoClientConfig, ADefaultRecordIsEmpty) {
  const ZORL2InfoClientConfig config;
  EXPECT_THAT(config.interfaceCategories, IsEmpty());
  EXPECT_THAT(config.token, IsEmpty());
}

// The members, in this order, are what other code of the manager relies on.
TEST(InfoClientConfig, TheRecordKeepsItsOrder) {
  const ZORL2InfoClientConfig config;
  const auto place = [&config](const auto& member) {
    return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&config);
  };
  EXPECT_EQ(place(config.protocolType), 0);
  EXPECT_EQ(place(config.interfaceCategories), 8);
  EXPECT_EQ(place(config.clientAddress), 56);
  EXPECT_EQ(place(config.token), 64);
  EXPECT_EQ(sizeof(config), 96u);
}

}  // namespace
