// Many threads at once: the first use of every table, then all converters both ways. The converter
// objects are shared; each thread has its own messages and records. ThreadSanitizer says more about
// it than the expectations here.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "convert/enum_serialization.h"
#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"
#include "convert/intf_entry_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "native/intf_entry_builder.h"
#include "tests/state/signals.h"
#include "tests/support/entry_fixtures.h"
#include "tests/support/message_matchers.h"

namespace pb = zorl2::protobuf;

namespace {

using zorl2_test::FromText;
using zorl2_test::FullEntry;
using zorl2_test::FullEntryMessage;
using zorl2_test::Number;

constexpr int kThreads = 8;

// Lets the threads go on when all of them have come.
class Barrier {
 public:
  void Wait() {
    const int round = round_;
    if (++waiting_ == kThreads) {
      waiting_ = 0;
      ++round_;
      return;
    }
    while (round_ == round) std::this_thread::yield();
  }

 private:
  std::atomic<int> waiting_{0};
  std::atomic<int> round_{0};
};

void RunInThreads(const std::function<void()>& work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
}

// A number that no enumeration lists sends each helper function to its table.
template <typename Message, typename Native>
void RefuseBoth(bool (IntfEntryConvertHelperProtobuf::*to_native)(const Message&, Native&),
                void (IntfEntryConvertHelperZOR::*to_message)(const Native&, Message&),
                Barrier& barrier) {
  Message message = Number<Message>(99);
  Native native = Number<Native>(99);
  barrier.Wait();
  IntfEntryConvertHelperProtobuf from_messages;
  EXPECT_THROW((from_messages.*to_native)(message, native), std::out_of_range);
  barrier.Wait();
  IntfEntryConvertHelperZOR from_records;
  EXPECT_THROW((from_records.*to_message)(native, message), std::out_of_range);
}

// Stands first: the tables are built once in the life of a process.
TEST(Concurrency, TheFirstUseOfEachTableMayHappenInAllThreadsAtOnce) {
  Barrier barrier;
  RunInThreads([&barrier] {
    using FromMessages = IntfEntryConvertHelperProtobuf;
    using FromRecords = IntfEntryConvertHelperZOR;
    RefuseBoth(&FromMessages::ConvertAdminStatus, &FromRecords::ConvertAdminStatus, barrier);
    RefuseBoth(&FromMessages::ConvertOperationalStatus, &FromRecords::ConvertOperationalStatus,
               barrier);
    RefuseBoth(&FromMessages::ConvertLinkStatus, &FromRecords::ConvertLinkStatus, barrier);
    RefuseBoth(&FromMessages::ConvertEthernetSpeed, &FromRecords::ConvertEthernetSpeed, barrier);
    RefuseBoth(&FromMessages::ConvertDuplexMode, &FromRecords::ConvertDuplexMode, barrier);
    RefuseBoth(&FromMessages::ConvertInterfaceType, &FromRecords::ConvertInterfaceType, barrier);
    RefuseBoth(&FromMessages::ConvertVlanType, &FromRecords::ConvertVlanType, barrier);

    // The two category tables.
    const pb::IntfEntry message = FullEntryMessage();
    IntfEntry entry;
    barrier.Wait();
    EXPECT_TRUE(IntfEntryConverter().Convert(message, entry));
    pb::IntfEntry back;
    barrier.Wait();
    EXPECT_TRUE(IntfEntryConverter().Convert(entry, back));
    EXPECT_EQ(back.SerializeAsString(), message.SerializeAsString());

    // The two protocol tables, and the total translations.
    ShutStateInfoSyncSignal shut;
    shut.protocol = L1_PROTO;
    pb::ShutStateSync shut_message;
    BlockStateInfoSyncSignal block;
    const auto block_message = zorl2_test::EmptyMessage<zorl2_test::Block>(pb::L2_PROTO);
    barrier.Wait();
    EXPECT_THROW(ShutStateConverter().Convert(shut, shut_message), std::out_of_range);
    EXPECT_THROW(BlockStateConverter().Convert(block_message, block), std::out_of_range);
    EXPECT_EQ(SerializeProtocolType(L1_PROTO), pb::L1_PROTO);
    EXPECT_EQ(DeserializeProtocolType(pb::L2_PROTO), L2_PROTO);
  });
}

// The converters are shared by all threads, the sources in native form too: nobody writes them.
struct Shared {
  ZORIDConverter zorid;
  IntfEntryConverter entry;
  ShutStateConverter shut;
  BlockStateConverter block;
  ZORL2InfoClientConfigConverter client;
  LagMemberConverter lag;

  const zorid_t zorid_source = zorl2_test::Id(10, 20, 30, 40);
  const IntfEntry entry_source = FullEntry();
  const ShutStateInfoSyncSignal shut_source{
      {{zorl2_test::Id(1, 2, 3, 4), true}, {zorl2_test::Id(1, 2, 3, 5), false}}, ERPS};
  const BlockStateInfoSyncSignal block_source{{{zorl2_test::Id(6, 7, 8, 9), BLOCK_STATE_BLOCK}},
                                              STP};
  const ZORL2InfoClientConfig client_source{LACP, {L2, VIRTUAL_IF}, 0x1122334455667788, "east"};
  const LagMemberOperation lag_source{
      zorl2_test::Id(1, 1, 2, 2), zorl2_test::Id(3, 3, 4, 4), 5, 6, true, false};
};

// There and back from a shared record, through bytes, to this message. The record that receives is
// a fresh one.
template <typename Message, typename Native>
bool ThereAndBack(Converter<Message, Native>& converter, const Native& source,
                  const std::string& expected) {
  Message message;
  if (!converter.Convert(source, message)) return false;
  const std::string bytes = message.SerializeAsString();
  if (bytes != expected) return false;
  Message received;
  if (!received.ParseFromString(bytes)) return false;
  Native native;
  if (!converter.Convert(received, native)) return false;
  Message again;
  return converter.Convert(native, again) && again.SerializeAsString() == expected;
}

template <typename Message>
std::string Bytes(const std::string& text) {
  return FromText<Message>(text).SerializeAsString();
}

TEST(Concurrency, SharedConvertersServeAllThreadsForASecond) {
  Shared shared;
  const std::string zorid = Bytes<pb::Zorid>("value: [10, 20, 30, 40]");
  const std::string entry = FullEntryMessage().SerializeAsString();
  const std::string shut = Bytes<pb::ShutStateSync>(
      "shutProtocol: ERPS intfs { zorid { value: [1, 2, 3, 4] } state: true }"
      " intfs { zorid { value: [1, 2, 3, 5] } state: false }");
  const std::string block = Bytes<pb::BlockStateSync>(
      "blockProtocol: STP intfs { zorid { value: [6, 7, 8, 9] } state: BLOCK_STATE_BLOCK }");
  const std::string client = Bytes<pb::InformationClient>(
      "clientAddress: 0x1122334455667788 protocolType: LACP token: 'east'"
      " intfCategory { L1: false L2: true VP: false L2_SUB_IF: false VIRTUAL_IF: true }");
  const std::string lag = Bytes<pb::LagMemberOperationProto>(
      "lag { value: [1, 1, 2, 2] } member { value: [3, 3, 4, 4] } token: 5"
      " collecting: true distributing: false");

  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::seconds(1);
  std::atomic<long> rounds{0};
  std::atomic<long> failures{0};
  RunInThreads([&] {
    while (Clock::now() < end) {
      failures += !ThereAndBack(shared.zorid, shared.zorid_source, zorid);
      failures += !ThereAndBack(shared.entry, shared.entry_source, entry);
      failures += !ThereAndBack(shared.shut, shared.shut_source, shut);
      failures += !ThereAndBack(shared.block, shared.block_source, block);
      failures += !ThereAndBack(shared.client, shared.client_source, client);
      failures += !ThereAndBack(shared.lag, shared.lag_source, lag);
      ++rounds;
    }
  });
  EXPECT_EQ(failures, 0);
  EXPECT_GE(rounds, kThreads);
}

}  // namespace
