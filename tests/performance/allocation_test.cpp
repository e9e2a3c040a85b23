// What each conversion takes from the heap, exactly.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "bench/allocation_counter.h"
#include "bench/fixtures.h"
#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"

namespace pb = zorl2::protobuf;
using zorl2_bench::AllocationsOfThisThread;
using zorl2_bench::Order;

namespace {

template <typename Converter, typename From, typename To>
std::uint64_t AllocationsOf(const From& from, To& to) {
  Converter converter;
  const std::uint64_t before = AllocationsOfThisThread();
  const bool converted = converter.Convert(from, to);
  const std::uint64_t allocations = AllocationsOfThisThread() - before;
  EXPECT_TRUE(converted);
  return allocations;
}

template <typename Converter, typename Message, typename Native>
void ExpectNoneIntoReusedMessage(const Native& native) {
  Message message;
  EXPECT_GT((AllocationsOf<Converter>(native, message)), 0U) << "the counter does not count";
  EXPECT_EQ((AllocationsOf<Converter>(native, message)), 0U);
}

ShutStateInfoSyncSignal ShutSignal(int count) {
  ShutStateInfoSyncSignal signal;
  for (const auto& pair : zorl2_bench::ShutStates(count, Order::kSorted)) {
    signal.shutStates.insert(pair);
  }
  return signal;
}

BlockStateInfoSyncSignal BlockSignal(int count) {
  BlockStateInfoSyncSignal signal;
  for (const auto& pair : zorl2_bench::BlockStates(count, Order::kSorted)) {
    signal.blockStates.insert(pair);
  }
  return signal;
}

TEST(Allocations, EntryIntoReusedMessage_None) {
  ExpectNoneIntoReusedMessage<IntfEntryConverter, pb::IntfEntry>(zorl2_bench::Entry(1));
}

TEST(Allocations, IdentifierIntoReusedMessage_None) {
  ExpectNoneIntoReusedMessage<ZORIDConverter, pb::Zorid>(zorl2_bench::Identifier(0x01020304));
}

TEST(Allocations, RegistrationIntoReusedMessage_None) {
  ExpectNoneIntoReusedMessage<ZORL2InfoClientConfigConverter, pb::InformationClient>(
      zorl2_bench::Registration(1));
}

TEST(Allocations, OperationIntoReusedMessage_None) {
  ExpectNoneIntoReusedMessage<LagMemberConverter, pb::LagMemberOperationProto>(
      zorl2_bench::Operation(1));
}

TEST(Allocations, StateSignalsIntoReusedMessages_None) {
  for (const int count : {1, 10, 1000, 100000}) {
    SCOPED_TRACE(count);
    ExpectNoneIntoReusedMessage<ShutStateConverter, pb::ShutStateSync>(ShutSignal(count));
    ExpectNoneIntoReusedMessage<BlockStateConverter, pb::BlockStateSync>(BlockSignal(count));
  }
}

// Three strings of more than 15 bytes, 2 shutdown protocols, 3 block entries.
TEST(Allocations, EntryToNative_OnePerLongStringAndListElementIntoAFreshRecordNoneIntoAUsedOne) {
  pb::IntfEntry message;
  ASSERT_TRUE(IntfEntryConverter().Convert(zorl2_bench::Entry(1), message));
  IntfEntry entry;
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 8U);
  ASSERT_TRUE(IntfEntryConverter().Convert(zorl2_bench::Entry(2), message));
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 0U);
}

TEST(Allocations, EntryToNative_OnlyForWhatAUsedRecordLacks) {
  pb::IntfEntry message;
  ASSERT_TRUE(IntfEntryConverter().Convert(zorl2_bench::Entry(1), message));
  IntfEntry entry;
  ASSERT_TRUE(IntfEntryConverter().Convert(message, entry));
  message.mutable_generalinfo()->set_phy_addr(std::string(100, 'p'));
  message.add_shutdownprotos(pb::CFM);
  *message.add_blockinfo() = message.blockinfo(0);
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 3U);
  // Shorter lists give their nodes back, shorter strings keep their room.
  message.clear_shutdownprotos();
  message.mutable_generalinfo()->set_phy_addr("");
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 0U);
  message.mutable_generalinfo()->set_phy_addr(std::string(100, 'q'));
  message.add_shutdownprotos(pb::CFM);
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 1U);
}

TEST(Allocations, ARejectedSignalOfAnySize_None) {
  pb::ShutStateSync message;
  ASSERT_TRUE(ShutStateConverter().Convert(ShutSignal(100000), message));
  message.mutable_intfs(99999)->clear_state();
  ShutStateInfoSyncSignal signal;
  const std::uint64_t before = AllocationsOfThisThread();
  EXPECT_FALSE(ShutStateConverter().Convert(message, signal));
  EXPECT_EQ(AllocationsOfThisThread(), before);
}

// A string of 15 bytes is kept in place, one of 16 is not.
TEST(Allocations, EntryToNative_NoneForShortStringsAndEmptyLists) {
  pb::IntfEntry message;
  ASSERT_TRUE(IntfEntryConverter().Convert(zorl2_bench::Entry(1), message));
  message.mutable_generalinfo()->set_intf_name("fifteen octets!");
  message.mutable_generalinfo()->set_phy_addr("");
  message.mutable_generalinfo()->set_redundancy_group_phy_addr("short");
  message.clear_shutdownprotos();
  message.clear_blockinfo();
  IntfEntry entry;
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 0U);
  message.mutable_generalinfo()->set_intf_name("sixteen octets!!");
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 1U);
}

TEST(Allocations, StatesToNative_OnePerInterfaceIntoAnEmptyMapNoneIntoAFilledOne) {
  for (const int count : {1, 10, 1000, 100000}) {
    for (const Order order : {Order::kSorted, Order::kShuffled}) {
      SCOPED_TRACE(count);
      pb::ShutStateSync shut;
      ASSERT_TRUE(ShutStateConverter().Convert(ShutSignal(count), shut));
      pb::BlockStateSync block;
      ASSERT_TRUE(BlockStateConverter().Convert(BlockSignal(count), block));
      if (order == Order::kShuffled) {
        // Descending, which is as far from the order of the map as it can be.
        for (int i = 0; i < count / 2; ++i) {
          shut.mutable_intfs()->SwapElements(i, count - 1 - i);
          block.mutable_intfs()->SwapElements(i, count - 1 - i);
        }
      }
      // One that is named twice is one interface.
      *shut.add_intfs() = shut.intfs(0);
      *block.add_intfs() = block.intfs(count / 2);
      ShutStateInfoSyncSignal shut_signal;
      EXPECT_EQ((AllocationsOf<ShutStateConverter>(shut, shut_signal)),
                static_cast<std::uint64_t>(count));
      EXPECT_EQ((AllocationsOf<ShutStateConverter>(shut, shut_signal)), 0U);
      BlockStateInfoSyncSignal block_signal;
      EXPECT_EQ((AllocationsOf<BlockStateConverter>(block, block_signal)),
                static_cast<std::uint64_t>(count));
      EXPECT_EQ((AllocationsOf<BlockStateConverter>(block, block_signal)), 0U);
    }
  }
}

TEST(Allocations, IdentifierAndOperationToNative_None) {
  pb::Zorid zorid;
  ASSERT_TRUE(ZORIDConverter().Convert(zorl2_bench::Identifier(0x01020304), zorid));
  zorid_t id;
  EXPECT_EQ((AllocationsOf<ZORIDConverter>(zorid, id)), 0U);
  pb::LagMemberOperationProto message;
  ASSERT_TRUE(LagMemberConverter().Convert(zorl2_bench::Operation(1), message));
  LagMemberOperation operation;
  EXPECT_EQ((AllocationsOf<LagMemberConverter>(message, operation)), 0U);
}

}  // namespace
