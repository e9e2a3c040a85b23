// A caller that keeps a pointer to a submessage across Clear() can fill a submessage that is not
// present. Presence decides, whatever such a submessage holds.
#include <gmock/gmock.h>

#include <initializer_list>

#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "native/intf_entry_builder.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;
using testing::ElementsAre;
using testing::IsEmpty;
using zorl2_test::FromText;

namespace {

void Append(pb::Zorid& message, std::initializer_list<std::uint32_t> values) {
  for (const std::uint32_t value : values) message.add_value(value);
}

TEST(StalePointers, MessageToNative_AnAbsentLagOrMemberIsRejected) {
  const auto whole = FromText<pb::LagMemberOperationProto>(
      "lag { value: [1, 2, 3, 4] } member { value: [5, 6, 7, 8] } token: 9");
  LagMemberOperation operation;

  pb::LagMemberOperationProto without_lag = whole;
  pb::Zorid* lag = without_lag.mutable_lag();
  without_lag.clear_lag();
  Append(*lag, {1, 2, 3, 4});
  EXPECT_FALSE(LagMemberConverter().Convert(without_lag, operation));

  pb::LagMemberOperationProto without_member = whole;
  pb::Zorid* member = without_member.mutable_member();
  without_member.clear_member();
  Append(*member, {5, 6, 7, 8});
  EXPECT_FALSE(LagMemberConverter().Convert(without_member, operation));
  EXPECT_EQ(operation.token, 0U);
}

TEST(StalePointers, MessageToNative_AnAbsentIdentifierOfAStateIsRejected) {
  pb::ShutStateSync message;
  message.set_shutprotocol(pb::LACP);
  pb::ShutStateInfo& info = *message.add_intfs();
  info.set_state(true);
  pb::Zorid* zorid = info.mutable_zorid();
  info.clear_zorid();
  Append(*zorid, {1, 2, 3, 4});
  ShutStateInfoSyncSignal signal;
  EXPECT_FALSE(ShutStateConverter().Convert(message, signal));
  EXPECT_THAT(signal.shutStates, IsEmpty());
}

TEST(StalePointers, MessageToNative_AnAbsentParentBecomesZero) {
  pb::IntfEntry message = zorl2_test::FullEntryMessage();
  pb::Zorid* parent = message.mutable_parent();
  message.clear_parent();
  Append(*parent, {1, 2, 3, 4});
  IntfEntry entry = zorl2_test::FullEntry();
  ASSERT_TRUE(IntfEntryConverter().Convert(message, entry));
  EXPECT_EQ(entry.getParent(), zorid_t{});
}

TEST(StalePointers, NativeToMessage_TheIdentifiersOfAnEntryAreReplaced) {
  pb::IntfEntry message = zorl2_test::FullEntryMessage();
  pb::Zorid* zorid = message.mutable_zorid();
  pb::Zorid* parent = message.mutable_parent();
  message.Clear();
  Append(*zorid, {91});
  Append(*parent, {92, 93, 94, 95, 96});
  IntfEntryBuilder builder(zorl2_test::FullEntry());
  builder.addZorId({{1, 2, 3, 4}}).addParent({{5, 6, 7, 8}});
  ASSERT_TRUE(IntfEntryConverter().Convert(builder.Build(), message));
  EXPECT_THAT(message.zorid().value(), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(message.parent().value(), ElementsAre(5, 6, 7, 8));
}

TEST(StalePointers, NativeToMessage_TheIdentifiersOfAnOperationAreReplaced) {
  pb::LagMemberOperationProto message;
  pb::Zorid* lag = message.mutable_lag();
  pb::Zorid* member = message.mutable_member();
  message.Clear();
  Append(*lag, {91});
  Append(*member, {92});
  LagMemberOperation operation;
  operation.lag = {{1, 2, 3, 4}};
  operation.member = {{5, 6, 7, 8}};
  ASSERT_TRUE(LagMemberConverter().Convert(operation, message));
  EXPECT_THAT(message.lag().value(), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(message.member().value(), ElementsAre(5, 6, 7, 8));
}

TEST(StalePointers, NativeToMessage_TheIdentifierOfAStateIsReplaced) {
  pb::BlockStateSync message;
  pb::Zorid* zorid = message.add_intfs()->mutable_zorid();
  message.Clear();
  Append(*zorid, {91});
  BlockStateInfoSyncSignal signal;
  signal.protocol = LACP;
  signal.blockStates[{{1, 2, 3, 4}}] = BLOCK_STATE_BLOCK;
  ASSERT_TRUE(BlockStateConverter().Convert(signal, message));
  ASSERT_EQ(message.intfs_size(), 1);
  EXPECT_THAT(message.intfs(0).zorid().value(), ElementsAre(1, 2, 3, 4));
}

}  // namespace
