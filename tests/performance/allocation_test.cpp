// What conversions allocate, exactly. exhaustion_test has the numbers for single records.
#include <gtest/gtest.h>

#include <string>

#include "bench/fixtures.h"
#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/support/allocations.h"

namespace pb = zorl2::protobuf;

namespace {

template <typename Converter, typename From, typename To>
long AllocationsOf(const From& from, To& to) {
  return zorl2_test::AllocationsOf([&] { EXPECT_TRUE(Converter().Convert(from, to)); });
}

template <typename Converter, typename Message, typename Native>
void ExpectNoneIntoReusedMessage(const Native& native) {
  Message message;
  EXPECT_GT((AllocationsOf<Converter>(native, message)), 0) << "the counter does not count";
  EXPECT_EQ((AllocationsOf<Converter>(native, message)), 0);
}

constexpr auto kSorted = zorl2_bench::Order::kSorted;

ShutStateInfoSyncSignal Shut(int count) {
  const auto states = zorl2_bench::ShutStates(count, kSorted);
  return {{states.begin(), states.end()}, STP};
}

BlockStateInfoSyncSignal Block(int count) {
  const auto states = zorl2_bench::BlockStates(count, kSorted);
  return {{states.begin(), states.end()}, STP};
}

TEST(Allocations, NativeToMessage_NoneIntoAReusedMessage) {
  ExpectNoneIntoReusedMessage<IntfEntryConverter, pb::IntfEntry>(zorl2_bench::Entry(1));
  ExpectNoneIntoReusedMessage<ZORIDConverter, pb::Zorid>(zorl2_bench::Identifier(0x01020304));
  ExpectNoneIntoReusedMessage<ZORL2InfoClientConfigConverter, pb::InformationClient>(
      zorl2_bench::Registration(1));
  ExpectNoneIntoReusedMessage<LagMemberConverter, pb::LagMemberOperationProto>(
      zorl2_bench::Operation(1));
  for (const int count : {1, 10, 1000, 100000}) {
    SCOPED_TRACE(count);
    ExpectNoneIntoReusedMessage<ShutStateConverter, pb::ShutStateSync>(Shut(count));
    ExpectNoneIntoReusedMessage<BlockStateConverter, pb::BlockStateSync>(Block(count));
  }
}

TEST(Allocations, EntryToNative_OnlyForWhatAUsedRecordLacks) {
  pb::IntfEntry message;
  ASSERT_TRUE(IntfEntryConverter().Convert(zorl2_bench::Entry(1), message));
  IntfEntry entry;
  ASSERT_TRUE(IntfEntryConverter().Convert(message, entry));
  message.mutable_generalinfo()->set_phy_addr(std::string(100, 'p'));
  message.add_shutdownprotos(pb::CFM);
  *message.add_blockinfo() = message.blockinfo(0);
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 3);
  // Shorter lists release their nodes, shorter strings keep their capacity.
  message.clear_shutdownprotos();
  message.mutable_generalinfo()->set_phy_addr("");
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 0);
  message.mutable_generalinfo()->set_phy_addr(std::string(100, 'q'));
  message.add_shutdownprotos(pb::CFM);
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 1);
}

// A string of 15 bytes is stored in place, one of 16 is not.
TEST(Allocations, EntryToNative_NoneForShortStringsAndEmptyLists) {
  pb::IntfEntry message;
  ASSERT_TRUE(IntfEntryConverter().Convert(zorl2_bench::Entry(1), message));
  message.mutable_generalinfo()->set_intf_name("exactly 15 long");
  message.mutable_generalinfo()->set_phy_addr("");
  message.mutable_generalinfo()->set_redundancy_group_phy_addr("short");
  message.clear_shutdownprotos();
  message.clear_blockinfo();
  IntfEntry entry;
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 0);
  message.mutable_generalinfo()->set_intf_name("16 bytes is long");
  EXPECT_EQ((AllocationsOf<IntfEntryConverter>(message, entry)), 1);
}

// One for each interface that the map does not hold, in ascending and in descending order.
template <typename Converter, typename Message, typename Signal>
void ExpectOnePerNewInterface(const Signal& source) {
  Message message;
  ASSERT_TRUE(Converter().Convert(source, message));
  const int count = message.intfs_size();
  for (const bool descending : {false, true}) {
    for (int i = 0; descending && i < count / 2; ++i) {
      message.mutable_intfs()->SwapElements(i, count - 1 - i);
    }
    // An interface that is named twice is one interface.
    *message.add_intfs() = message.intfs(0);
    Signal signal;
    EXPECT_EQ((AllocationsOf<Converter>(message, signal)), count);
    EXPECT_EQ((AllocationsOf<Converter>(message, signal)), 0);
    message.mutable_intfs()->RemoveLast();
  }
}

TEST(Allocations, StatesToNative_OnePerInterfaceIntoAnEmptyMapNoneIntoAFilledOne) {
  for (const int count : {1, 10, 1000, 100000}) {
    SCOPED_TRACE(count);
    ExpectOnePerNewInterface<ShutStateConverter, pb::ShutStateSync>(Shut(count));
    ExpectOnePerNewInterface<BlockStateConverter, pb::BlockStateSync>(Block(count));
  }
}

TEST(Allocations, StatesToNative_NoneForARejectedSignalOfAnySize) {
  pb::ShutStateSync message;
  ASSERT_TRUE(ShutStateConverter().Convert(Shut(100000), message));
  message.mutable_intfs(99999)->clear_state();
  ShutStateInfoSyncSignal signal;
  EXPECT_EQ(zorl2_test::AllocationsOf([&] { ShutStateConverter().Convert(message, signal); }), 0);
  EXPECT_TRUE(signal.shutStates.empty());
}

}  // namespace
