#include "convert/lag_member_converter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <typeinfo>

#include "tests/state/signals.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;

namespace {

using testing::ElementsAre;
using zorl2_test::AddUnknownField;
using zorl2_test::EqualsText;
using zorl2_test::FromText;
using zorl2_test::Id;

using Bytes = std::array<unsigned char, sizeof(LagMemberOperation)>;

// No member at its default.
LagMemberOperation HeldOperation() {
  LagMemberOperation operation;
  operation.lag = Id(11, 12, 13, 14);
  operation.member = Id(21, 22, 23, 24);
  operation.token = 0x8182838485868788;
  operation.managerData = 0xCAFEBABE;
  operation.collecting = true;
  operation.distributing = true;
  return operation;
}

// Every byte of the record, the manager's own and those that belong to no member included.
Bytes BytesOf(const LagMemberOperation& operation) {
  Bytes bytes;
  std::memcpy(bytes.data(), &operation, sizeof(operation));
  return bytes;
}

pb::LagMemberOperationProto FullMessage() {
  return FromText<pb::LagMemberOperationProto>(
      "lag { value: [1, 2, 3, 4] } member { value: [5, 6, 7, 8] } token: 0x1112131415161718"
      " collecting: true distributing: false");
}

TEST(LagMember, MessageToNative_TakesAllFiveFields) {
  LagMemberOperation operation;
  EXPECT_TRUE(LagMemberConverter().Convert(FullMessage(), operation));
  EXPECT_EQ(operation.lag, Id(1, 2, 3, 4));
  EXPECT_EQ(operation.member, Id(5, 6, 7, 8));
  EXPECT_EQ(operation.token, 0x1112131415161718u);
  EXPECT_TRUE(operation.collecting);
  EXPECT_FALSE(operation.distributing);
}

TEST(LagMember, MessageToNative_CopiesTheFlagsAsTheyStand) {
  for (const bool collecting : {false, true}) {
    for (const bool distributing : {false, true}) {
      auto message = FullMessage();
      message.set_collecting(collecting);
      message.set_distributing(distributing);
      LagMemberOperation operation = HeldOperation();
      EXPECT_TRUE(LagMemberConverter().Convert(message, operation));
      EXPECT_EQ(operation.collecting, collecting);
      EXPECT_EQ(operation.distributing, distributing);
    }
  }
}

TEST(LagMember, MessageToNative_AbsentScalarsBecomeZeroAndFalse) {
  LagMemberOperation operation = HeldOperation();
  auto message = FullMessage();
  message.clear_token();
  message.clear_collecting();
  message.clear_distributing();
  EXPECT_TRUE(LagMemberConverter().Convert(message, operation));
  EXPECT_EQ(operation.lag, Id(1, 2, 3, 4));
  EXPECT_EQ(operation.member, Id(5, 6, 7, 8));
  EXPECT_EQ(operation.token, 0u);
  EXPECT_FALSE(operation.collecting);
  EXPECT_FALSE(operation.distributing);
}

TEST(LagMember, MessageToNative_EachScalarMayBeAbsentAlone) {
  LagMemberOperation operation = HeldOperation();
  auto message = FullMessage();
  message.set_distributing(true);
  auto without = message;
  without.clear_token();
  EXPECT_TRUE(LagMemberConverter().Convert(without, operation));
  EXPECT_EQ(operation.token, 0u);
  EXPECT_TRUE(operation.collecting && operation.distributing);

  without = message;
  without.clear_collecting();
  EXPECT_TRUE(LagMemberConverter().Convert(without, operation));
  EXPECT_EQ(operation.token, 0x1112131415161718u);
  EXPECT_TRUE(!operation.collecting && operation.distributing);

  without = message;
  without.clear_distributing();
  EXPECT_TRUE(LagMemberConverter().Convert(without, operation));
  EXPECT_TRUE(operation.collecting && !operation.distributing);
}

TEST(LagMember, MessageToNative_LeavesTheManagersOwnBitsAlone) {
  for (const std::uint32_t data : {0u, 0xCAFEBABEu, 0xFFFFFFFFu}) {
    LagMemberOperation operation = HeldOperation();
    operation.managerData = data;
    EXPECT_TRUE(LagMemberConverter().Convert(FullMessage(), operation));
    EXPECT_EQ(operation.managerData, data);
  }
}

TEST(LagMember, MessageToNative_TakesTheLowEightBitsOfAnOctet) {
  LagMemberOperation operation;
  EXPECT_TRUE(LagMemberConverter().Convert(
      FromText<pb::LagMemberOperationProto>("lag { value: [256, 511, 0x80000002, 0xFFFFFFFF] }"
                                            "member { value: [0x100000FE, 0, 0, 0x0101] }"),
      operation));
  EXPECT_EQ(operation.lag, Id(0, 255, 2, 255));
  EXPECT_EQ(operation.member, Id(254, 0, 0, 1));
}

// How many values an identifier has; -1 when it is absent altogether.
void SetCount(int count, pb::Zorid* (pb::LagMemberOperationProto::*create)(),
              pb::LagMemberOperationProto& message) {
  if (count < 0) return;
  pb::Zorid& zorid = *(message.*create)();
  for (int value = 0; value < count; ++value) zorid.add_value(9);
}

TEST(LagMember, MessageToNative_ARefusalLeavesEveryByteOfTheRecordAsItWas) {
  constexpr int kCounts[] = {-1, 0, 1, 2, 3, 4, 5, 8};
  int refused = 0;
  for (const int lag : kCounts) {
    for (const int member : kCounts) {
      if (lag == 4 && member == 4) continue;
      SCOPED_TRACE(std::to_string(lag) + " and " + std::to_string(member) + " values");
      pb::LagMemberOperationProto message;
      SetCount(lag, &pb::LagMemberOperationProto::mutable_lag, message);
      SetCount(member, &pb::LagMemberOperationProto::mutable_member, message);
      message.set_token(7);
      message.set_collecting(false);
      message.set_distributing(false);

      LagMemberOperation operation = HeldOperation();
      // The bytes behind the last member are compared as well.
      std::memset(reinterpret_cast<char*>(&operation.distributing) + 1, 0x5A, 2);
      const Bytes before = BytesOf(operation);
      EXPECT_FALSE(LagMemberConverter().Convert(message, operation));
      EXPECT_EQ(std::memcmp(&operation, before.data(), sizeof(operation)), 0);
      ++refused;
    }
  }
  EXPECT_EQ(refused, 63);
}

TEST(LagMember, MessageToNative_AnEmptyMessageIsRefused) {
  LagMemberOperation operation = HeldOperation();
  const Bytes before = BytesOf(operation);
  EXPECT_FALSE(LagMemberConverter().Convert(pb::LagMemberOperationProto(), operation));
  EXPECT_EQ(BytesOf(operation), before);
}

TEST(LagMember, NativeToMessage_SetsAllFiveFields) {
  pb::LagMemberOperationProto message;
  LagMemberOperation operation = HeldOperation();
  operation.distributing = false;
  EXPECT_TRUE(LagMemberConverter().Convert(operation, message));
  EXPECT_THAT(message, EqualsText<pb::LagMemberOperationProto>(
                           "lag { value: [11, 12, 13, 14] } member { value: [21, 22, 23, 24] }"
                           "token: 0x8182838485868788 collecting: true distributing: false"));
  operation.collecting = false;
  operation.distributing = true;
  EXPECT_TRUE(LagMemberConverter().Convert(operation, message));
  EXPECT_FALSE(message.collecting());
  EXPECT_TRUE(message.distributing());
}

TEST(LagMember, NativeToMessage_ZeroAndFalseArePresent) {
  pb::LagMemberOperationProto message;
  EXPECT_TRUE(LagMemberConverter().Convert(LagMemberOperation(), message));
  EXPECT_THAT(message, EqualsText<pb::LagMemberOperationProto>(
                           "lag { value: [0, 0, 0, 0] } member { value: [0, 0, 0, 0] }"
                           "token: 0 collecting: false distributing: false"));
}

TEST(LagMember, NativeToMessage_NothingThatTheMessageHeldSurvives) {
  auto message = FullMessage();
  message.mutable_lag()->add_value(5);
  message.mutable_member()->add_value(6);
  AddUnknownField(message);
  AddUnknownField(*message.mutable_lag());
  EXPECT_TRUE(LagMemberConverter().Convert(HeldOperation(), message));
  EXPECT_THAT(message, EqualsText<pb::LagMemberOperationProto>(
                           "lag { value: [11, 12, 13, 14] } member { value: [21, 22, 23, 24] }"
                           "token: 0x8182838485868788 collecting: true distributing: true"));
}

TEST(LagMember, NativeToMessage_LeavesTheWholeRecordAlone) {
  const LagMemberOperation operation = HeldOperation();
  const Bytes before = BytesOf(operation);
  pb::LagMemberOperationProto message;
  EXPECT_TRUE(LagMemberConverter().Convert(operation, message));
  EXPECT_EQ(BytesOf(operation), before);
}

// The manager's own bits decide nothing in a message.
TEST(LagMember, NativeToMessage_DoesNotSendTheManagersOwnBits) {
  LagMemberOperation operation = HeldOperation();
  pb::LagMemberOperationProto one;
  pb::LagMemberOperationProto other;
  EXPECT_TRUE(LagMemberConverter().Convert(operation, one));
  operation.managerData = 0;
  EXPECT_TRUE(LagMemberConverter().Convert(operation, other));
  EXPECT_EQ(one.SerializeAsString(), other.SerializeAsString());
}

TEST(LagMember, TheTokenIsCarriedWithAllItsBits) {
  constexpr std::uint64_t kTokens[] = {0xFFFFFFFFFFFFFFFF, 0x8000000000000000, 0x00000000FFFFFFFF,
                                       0x0000000100000000};
  for (const std::uint64_t token : kTokens) {
    LagMemberOperation operation = HeldOperation();
    operation.token = token;
    pb::LagMemberOperationProto message;
    EXPECT_TRUE(LagMemberConverter().Convert(operation, message));
    EXPECT_EQ(message.token(), token);
    pb::LagMemberOperationProto received;
    ASSERT_TRUE(received.ParseFromString(message.SerializeAsString()));
    LagMemberOperation back;
    EXPECT_TRUE(LagMemberConverter().Convert(received, back));
    EXPECT_EQ(back.token, token);
  }
}

// Absent comes back as zero: the record cannot tell the two apart.
TEST(LagMember, AnAbsentScalarComesBackPresent) {
  const auto sparse = FromText<pb::LagMemberOperationProto>(
      "lag { value: [1, 2, 3, 4] } member { value: [5, 6, 7, 8] }");
  LagMemberOperation operation = HeldOperation();
  EXPECT_TRUE(LagMemberConverter().Convert(sparse, operation));
  pb::LagMemberOperationProto back;
  EXPECT_TRUE(LagMemberConverter().Convert(operation, back));
  EXPECT_THAT(back, EqualsText<pb::LagMemberOperationProto>(
                        "lag { value: [1, 2, 3, 4] } member { value: [5, 6, 7, 8] }"
                        "token: 0 collecting: false distributing: false"));
}

TEST(LagMember, TheConverterIsReachedThroughItsBaseAndKnowsItsType) {
  using Base = Converter<pb::LagMemberOperationProto, LagMemberOperation>;
  const std::unique_ptr<Base> base = std::make_unique<LagMemberConverter>();
  EXPECT_NE(dynamic_cast<LagMemberConverter*>(base.get()), nullptr);
  const Base& reached = *base;
  EXPECT_EQ(typeid(reached), typeid(LagMemberConverter));
  LagMemberOperation operation;
  EXPECT_TRUE(base->Convert(FullMessage(), operation));
  EXPECT_EQ(operation.member, Id(5, 6, 7, 8));
  EXPECT_EQ(sizeof(LagMemberConverter), sizeof(void*));
}

// The manager's own bits stand between the token and the flags.
TEST(LagMember, TheRecordKeepsItsLayout) {
  EXPECT_EQ(offsetof(LagMemberOperation, lag), 0u);
  EXPECT_EQ(offsetof(LagMemberOperation, member), 4u);
  EXPECT_EQ(offsetof(LagMemberOperation, token), 8u);
  EXPECT_EQ(offsetof(LagMemberOperation, managerData), 16u);
  EXPECT_EQ(offsetof(LagMemberOperation, collecting), 20u);
  EXPECT_EQ(offsetof(LagMemberOperation, distributing), 21u);
  EXPECT_EQ(sizeof(LagMemberOperation), 24u);
}

}  // namespace
