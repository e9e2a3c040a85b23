#include "convert/lag_member_converter.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/convert/conversions.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;

namespace {

using zorl2_test::EqualsMessage;
using zorl2_test::EqualsNative;
using zorl2_test::FromText;

// No member has its default value, and no value is that of FullMessage().
LagMemberOperation HeldOperation() {
  return {{{11, 12, 13, 14}}, {{21, 22, 23, 24}}, 0x8182838485868788, 0xCAFEBABE, true, true};
}

pb::LagMemberOperationProto FullMessage() {
  return FromText<pb::LagMemberOperationProto>(
      "lag { value: [1, 2, 3, 4] } member { value: [5, 6, 7, 8] } token: 0x1112131415161718"
      " collecting: true distributing: true");
}

// The record of FullMessage(), with the manager's own member of HeldOperation().
LagMemberOperation FullRecord() {
  return {{{1, 2, 3, 4}}, {{5, 6, 7, 8}}, 0x1112131415161718, 0xCAFEBABE, true, true};
}

LagMemberOperation ToNative(const pb::LagMemberOperationProto& message) {
  LagMemberOperation operation = HeldOperation();
  EXPECT_TRUE(LagMemberConverter().Convert(message, operation));
  return operation;
}

pb::LagMemberOperationProto ToMessage(const LagMemberOperation& operation) {
  auto message = FullMessage();
  message.mutable_lag()->add_value(5);
  message.mutable_member()->add_value(6);
  zorl2_test::AddUnknownField(message);
  zorl2_test::AddUnknownField(*message.mutable_lag());
  EXPECT_TRUE(LagMemberConverter().Convert(operation, message));
  return message;
}

TEST(LagMember, MessageToNative_WritesAllFiveMembersAndNotTheManagersOwn) {
  EXPECT_THAT(ToNative(FullMessage()), EqualsNative(FullRecord()));
}

TEST(LagMember, MessageToNative_EachAbsentScalarBecomesZero) {
  pb::LagMemberOperationProto message = FullMessage();
  message.clear_token();
  LagMemberOperation expected = FullRecord();
  expected.token = 0;
  EXPECT_THAT(ToNative(message), EqualsNative(expected));

  message = FullMessage();
  message.clear_collecting();
  expected = FullRecord();
  expected.collecting = false;
  EXPECT_THAT(ToNative(message), EqualsNative(expected));

  message = FullMessage();
  message.clear_distributing();
  expected = FullRecord();
  expected.distributing = false;
  EXPECT_THAT(ToNative(message), EqualsNative(expected));
}

TEST(LagMember, MessageToNative_KeepsTheLow8BitsOfEachValue) {
  const LagMemberOperation operation = ToNative(
      FromText<pb::LagMemberOperationProto>("lag { value: [256, 511, 0x80000002, 0xFFFFFFFF] }"
                                            "member { value: [0x100000FE, 0, 0, 0x0101] }"));
  EXPECT_EQ(operation.lag, (zorid_t{{0, 255, 2, 255}}));
  EXPECT_EQ(operation.member, (zorid_t{{254, 0, 0, 1}}));
}

// Compares every byte of the record, padding included.
TEST(LagMember, MessageToNative_AnAbsentOrMalformedIdentifierLeavesTheRecordUnchanged) {
  constexpr int kAbsent = -1;
  constexpr int kCounts[] = {kAbsent, 0, 1, 2, 3, 4, 5, 8};
  for (const int lag : kCounts) {
    for (const int member : kCounts) {
      if (lag == 4 && member == 4) continue;
      SCOPED_TRACE(std::to_string(lag) + " and " + std::to_string(member) + " values");
      pb::LagMemberOperationProto message = FullMessage();
      // Presence decides: an absent identifier is filled through a pointer that the caller kept.
      pb::Zorid& lag_values = *message.mutable_lag();
      pb::Zorid& member_values = *message.mutable_member();
      if (lag == kAbsent) message.clear_lag();
      if (member == kAbsent) message.clear_member();
      lag_values.mutable_value()->Resize(lag == kAbsent ? 4 : lag, 9);
      member_values.mutable_value()->Resize(member == kAbsent ? 4 : member, 9);

      LagMemberOperation operation = HeldOperation();
      std::memset(reinterpret_cast<char*>(&operation.distributing) + 1, 0x5A, 2);
      std::array<unsigned char, sizeof(operation)> before;
      std::memcpy(before.data(), &operation, sizeof(operation));
      EXPECT_FALSE(
          zorl2_test::Silently([&] { return LagMemberConverter().Convert(message, operation); }));
      EXPECT_EQ(std::memcmp(&operation, before.data(), sizeof(operation)), 0);
    }
  }
}

TEST(LagMember, NativeToMessage_ReplacesTheMessageAndOmitsTheManagersOwnMember) {
  EXPECT_THAT(ToMessage(FullRecord()), EqualsMessage(FullMessage()));
  LagMemberOperation other = FullRecord();
  other.managerData = 1;
  EXPECT_THAT(ToMessage(other), EqualsMessage(FullMessage()));
}

TEST(LagMember, NativeToMessage_ReplacesWhatAnAbsentSubmessageHolds) {
  pb::LagMemberOperationProto message = FullMessage();
  pb::Zorid* lag = message.mutable_lag();
  pb::Zorid* member = message.mutable_member();
  message.Clear();
  zorl2_test::Append(*lag, {91});
  zorl2_test::Append(*member, {92});
  EXPECT_TRUE(LagMemberConverter().Convert(FullRecord(), message));
  EXPECT_THAT(message, EqualsMessage(FullMessage()));
}

TEST(LagMember, RoundTrip_AbsentScalarsComeBackPresent) {
  const auto sparse = FromText<pb::LagMemberOperationProto>(
      "lag { value: [0, 0, 0, 0] } member { value: [0, 0, 0, 0] }");
  const auto expected = FromText<pb::LagMemberOperationProto>(
      "lag { value: [0, 0, 0, 0] } member { value: [0, 0, 0, 0] }"
      "token: 0 collecting: false distributing: false");
  EXPECT_THAT(ToMessage(ToNative(sparse)), EqualsMessage(expected));
  EXPECT_THAT(ToMessage(LagMemberOperation{}), EqualsMessage(expected));
}

TEST(LagMember, RoundTrip_PreservesFlagsInAnyCombinationAndEveryBitOfTheToken) {
  constexpr std::uint64_t kTokens[] = {0xFFFFFFFFFFFFFFFF, 0x8000000000000000, 0xFFFFFFFF};
  for (const std::uint64_t token : kTokens) {
    for (const bool collecting : {false, true}) {
      for (const bool distributing : {false, true}) {
        LagMemberOperation operation = HeldOperation();
        operation.token = token;
        operation.collecting = collecting;
        operation.distributing = distributing;
        const pb::LagMemberOperationProto message = ToMessage(operation);
        EXPECT_EQ(message.token(), token);
        EXPECT_EQ(message.collecting(), collecting);
        EXPECT_EQ(message.distributing(), distributing);
        EXPECT_THAT(ToNative(message), EqualsNative(operation));
      }
    }
  }
}

}  // namespace
