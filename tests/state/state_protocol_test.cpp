// The protocol of a state signal, both directions. Compiled without assertions, because messages
// with a number outside the enumeration are made here.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include "convert/enum_serialization.h"
#include "tests/state/signals.h"
#include "tests/support/exceptions.h"

#ifndef NDEBUG
#error "the generated setters would refuse the numbers that this test is about"
#endif

namespace pb = zorl2::protobuf;

namespace {

using zorl2_test::Add;
using zorl2_test::AddUnknownField;
using zorl2_test::Block;
using zorl2_test::EmptyMessage;
using zorl2_test::ExpectMapAt;
using zorl2_test::Id;
using zorl2_test::kUnlisted;
using zorl2_test::Number;
using zorl2_test::Shut;

const zorid_t kA = Id(10, 20, 30, 40);
const zorid_t kB = Id(50, 60, 70, 80);

// Message number and native number of the protocols that a state signal can be about.
constexpr struct {
  std::int32_t message;
  std::int32_t native;
} kPairs[] = {{0, 12}, {1, 0}, {2, 1}, {3, 2}, {4, 3},  {5, 4},
              {6, 5},  {7, 6}, {8, 7}, {9, 8}, {12, 11}};

std::vector<std::int32_t> RefusedInMessage() {
  std::vector<std::int32_t> numbers = {10, 11};
  numbers.insert(numbers.end(), std::begin(kUnlisted), std::end(kUnlisted));
  return numbers;
}

std::vector<std::int32_t> RefusedNatively() {
  std::vector<std::int32_t> numbers = {9, 10};
  numbers.insert(numbers.end(), std::begin(kUnlisted), std::end(kUnlisted));
  return numbers;
}

template <typename T>
class StateProtocol : public testing::Test {};

struct CaseName {
  template <typename T>
  static std::string GetName(int) {
    return std::is_same_v<T, Shut> ? "Shut" : "Block";
  }
};

using Cases = testing::Types<Shut, Block>;
TYPED_TEST_SUITE(StateProtocol, Cases, CaseName);

TYPED_TEST(StateProtocol, MessageToNative_TranslatesEveryAcceptedProtocol) {
  for (const auto& pair : kPairs) {
    const auto message = EmptyMessage<TypeParam>(Number<pb::ProtocolType>(pair.message));
    typename TypeParam::Signal signal;
    signal.protocol = Number<ProtocolType>(99);
    EXPECT_TRUE(typename TypeParam::Converter().Convert(message, signal));
    EXPECT_EQ(signal.protocol, pair.native) << "message number " << pair.message;
  }
}

TYPED_TEST(StateProtocol, NativeToMessage_TranslatesEveryAcceptedProtocol) {
  for (const auto& pair : kPairs) {
    typename TypeParam::Signal signal;
    signal.protocol = Number<ProtocolType>(pair.native);
    typename TypeParam::Message message;
    EXPECT_TRUE(typename TypeParam::Converter().Convert(signal, message));
    EXPECT_TRUE(TypeParam::HasProtocol(message));
    EXPECT_EQ(TypeParam::Protocol(message), pair.message) << "native number " << pair.native;
  }
}

// Each number of both enumerations either goes there and back or is refused at once.
TYPED_TEST(StateProtocol, BothDirectionsAreInversesOfEachOther) {
  int accepted = 0;
  for (int number = pb::ProtocolType_MIN; number <= pb::ProtocolType_MAX; ++number) {
    if (number == pb::L1_PROTO || number == pb::L2_PROTO) continue;
    typename TypeParam::Converter converter;
    typename TypeParam::Signal signal;
    ASSERT_TRUE(
        converter.Convert(EmptyMessage<TypeParam>(Number<pb::ProtocolType>(number)), signal));
    typename TypeParam::Message back;
    ASSERT_TRUE(converter.Convert(signal, back));
    EXPECT_EQ(TypeParam::Protocol(back), number);
    ++accepted;
  }
  EXPECT_EQ(accepted, 11);
}

TYPED_TEST(StateProtocol, MessageToNative_ARefusedProtocolLeavesTheSignalAsItWas) {
  for (const std::int32_t number : RefusedInMessage()) {
    SCOPED_TRACE(number);
    auto message = EmptyMessage<TypeParam>(Number<pb::ProtocolType>(number));
    Add<TypeParam>(message, kA, false);
    Add<TypeParam>(message, kB, true);
    ASSERT_TRUE(message.IsInitialized());
    ASSERT_EQ(TypeParam::Protocol(message), number);

    typename TypeParam::Signal signal;
    signal.protocol = ERPS;
    TypeParam::States(signal)[kA] = TypeParam::kOn;
    ExpectMapAt([&] { typename TypeParam::Converter().Convert(message, signal); });
    EXPECT_EQ(signal.protocol, ERPS);
    EXPECT_EQ(TypeParam::States(signal),
              (std::map<zorid_t, typename TypeParam::State>{{kA, TypeParam::kOn}}));
  }
}

TYPED_TEST(StateProtocol, NativeToMessage_ARefusedProtocolLeavesTheMessageCleared) {
  for (const std::int32_t number : RefusedNatively()) {
    SCOPED_TRACE(number);
    typename TypeParam::Signal signal;
    signal.protocol = Number<ProtocolType>(number);
    TypeParam::States(signal)[kA] = TypeParam::kOn;
    auto message = EmptyMessage<TypeParam>(pb::STP);
    Add<TypeParam>(message, kB, true);
    AddUnknownField(message);

    ExpectMapAt([&] { typename TypeParam::Converter().Convert(signal, message); });
    EXPECT_FALSE(TypeParam::HasProtocol(message));
    EXPECT_EQ(message.intfs_size(), 0);
    EXPECT_EQ(message.SerializePartialAsString(), "");
  }
}

// The same numbers, where they are not refused.
TEST(ProtocolTranslation, AcceptsWhatAStateSignalRefuses) {
  EXPECT_EQ(DeserializeProtocolType(pb::L1_PROTO), 9);
  EXPECT_EQ(DeserializeProtocolType(pb::L2_PROTO), 10);
  EXPECT_EQ(SerializeProtocolType(Number<ProtocolType>(9)), pb::L1_PROTO);
  EXPECT_EQ(SerializeProtocolType(Number<ProtocolType>(10)), pb::L2_PROTO);
  for (const std::int32_t number : kUnlisted) {
    EXPECT_EQ(SerializeProtocolType(Number<ProtocolType>(number)), 0) << number;
    EXPECT_EQ(DeserializeProtocolType(Number<pb::ProtocolType>(number)), 12) << number;
  }
}

TEST(BlockState, MessageToNative_EveryStateButBlockIsForward) {
  std::vector<std::int32_t> others(std::begin(kUnlisted), std::end(kUnlisted));
  others.insert(others.end(), {0, 2, 7});
  for (const std::int32_t number : others) {
    auto message = EmptyMessage<Block>(pb::STP);
    Add<Block>(message, kA, true).set_state(Number<pb::BlockState>(number));
    Add<Block>(message, kB, true);
    BlockStateInfoSyncSignal signal;
    signal.blockStates[kA] = BLOCK_STATE_BLOCK;
    EXPECT_TRUE(BlockStateConverter().Convert(message, signal));
    EXPECT_EQ(signal.blockStates.at(kA), BLOCK_STATE_FORWARD) << number;
    EXPECT_EQ(signal.blockStates.at(kB), BLOCK_STATE_BLOCK) << number;
  }
}

// A number that the schema does not list is no state at all once it has travelled.
TEST(BlockState, MessageToNative_AnUnlistedStateFromTheWireIsAMissingField) {
  auto message = EmptyMessage<Block>(pb::STP);
  Add<Block>(message, kA, true).set_state(Number<pb::BlockState>(2));
  pb::BlockStateSync received;
  ASSERT_TRUE(received.ParsePartialFromString(message.SerializePartialAsString()));
  EXPECT_FALSE(received.intfs(0).has_state());
  BlockStateInfoSyncSignal signal;
  signal.protocol = ERPS;
  EXPECT_FALSE(BlockStateConverter().Convert(received, signal));
  EXPECT_EQ(signal.protocol, ERPS);
  EXPECT_TRUE(signal.blockStates.empty());
}

}  // namespace
