// Many threads share the converter objects. Each thread converts values of its own into messages
// and records that it has used before, so a variable that the threads share inside a converter
// shows up as a wrong value here or as a race under ThreadSanitizer.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "native/intf_entry_builder.h"
#include "tests/convert/signals.h"

namespace pb = zorl2::protobuf;

namespace {

constexpr std::uint8_t kThreads = 8;

// Makes records that differ in every field from one thread and one round to the next.
struct Values {
  std::uint8_t thread;
  std::uint8_t round;

  bool Flag(int bit) const { return ((thread * 2 + round) >> bit & 1) != 0; }
  template <typename Enum>
  Enum One(int count) const {
    return static_cast<Enum>((thread + round) % count);
  }
  std::string Text(const char* kind) const {
    return std::string(kind) + " of thread " + std::to_string(thread) + " in round " +
           std::to_string(round) + std::string(thread, '.');
  }

  zorid_t Id(std::uint8_t last) const { return {{thread, round, 7, last}}; }

  IntfEntry Entry() const {
    IntfEntryBuilder builder;
    builder.addZorId(Id(1)).addParent(Id(2));
    builder.addGeneralInfo({Text("name"), Text("address"), 100U + thread * 2U + round,
                            Text("group"), static_cast<std::uint16_t>(200 + thread * 2 + round)});
    builder.addStatusInfo({One<IntfEntry::AdminStatus>(2), One<IntfEntry::OperationalStatus>(2),
                           One<IntfEntry::LinkStatus>(2), 300U + thread * 2U + round, Flag(0),
                           Flag(1), Flag(2)});
    builder.addPhysicalInfo({400U + thread * 2U + round, One<IntfEntry::EthernetSpeed>(12),
                             One<IntfEntry::EthernetDuplexMode>(3)});
    builder.addTypeInfo({One<IntfEntry::InterfaceType>(5),
                         {Flag(0), Flag(1), Flag(2), Flag(3), Flag(2), Flag(1)},
                         One<IntfEntry::VlanType>(5)});
    for (int i = 0; i <= thread % 3 + round; ++i) {
      builder.addShutdownProto(One<ProtocolType>(13));
      builder.addBlockInfo({One<ProtocolType>(12), One<BlockState>(2)});
    }
    builder.setInterfaceCategory(One<InterfaceCategory>(5));
    return builder.Build();
  }

  ShutStateInfoSyncSignal Shut() const {
    return {{{Id(3), Flag(0)}, {Id(4), Flag(1)}}, One<ProtocolType>(9)};
  }

  BlockStateInfoSyncSignal Block() const {
    return {{{Id(5), One<BlockState>(2)}, {Id(6), BLOCK_STATE_BLOCK}}, One<ProtocolType>(9)};
  }

  ZORL2InfoClientConfig Client() const {
    return {One<ProtocolType>(13),
            {One<InterfaceCategory>(5)},
            500U + thread * 2U + round,
            Text("token")};
  }

  LagMemberOperation Lag() const {
    return {Id(7), Id(8), 600U + thread * 2U + round, 0, Flag(0), Flag(1)};
  }
};

// These records keep what they held: a receiver that wants the message alone empties them.
void Empty(ShutStateInfoSyncSignal& signal) { signal.shutStates.clear(); }
void Empty(BlockStateInfoSyncSignal& signal) { signal.blockStates.clear(); }
void Empty(ZORL2InfoClientConfig& config) { config.interfaceCategories.clear(); }
template <typename Native>
void Empty(Native&) {}

// The messages and records that one thread uses again and again.
template <typename Message, typename Native>
class Path {
 public:
  // To bytes, to a record and to the same bytes again.
  bool Runs(Converter<Message, Native>& converter, const Native& source) {
    if (!converter.Convert(source, sent_)) return false;
    const std::string bytes = sent_.SerializeAsString();
    Empty(native_);
    return received_.ParseFromString(bytes) && converter.Convert(received_, native_) &&
           converter.Convert(native_, again_) && again_.SerializeAsString() == bytes &&
           last_ != bytes && !(last_ = bytes).empty();
  }

 private:
  Message sent_;
  Message received_;
  Message again_;
  Native native_;
  std::string last_;
};

struct Converters {
  ZORIDConverter zorid;
  IntfEntryConverter entry;
  ShutStateConverter shut;
  BlockStateConverter block;
  ZORL2InfoClientConfigConverter client;
  LagMemberConverter lag;
};

TEST(Concurrency, ThreadsThatConvertDifferentValuesDoNotDisturbEachOther) {
  Converters shared;
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::seconds(1);
  std::atomic<long> rounds{0};
  std::atomic<long> failures{0};
  std::vector<std::thread> threads;
  for (std::uint8_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      Path<pb::Zorid, zorid_t> zorid;
      Path<pb::IntfEntry, IntfEntry> entry;
      Path<pb::ShutStateSync, ShutStateInfoSyncSignal> shut;
      Path<pb::BlockStateSync, BlockStateInfoSyncSignal> block;
      Path<pb::InformationClient, ZORL2InfoClientConfig> client;
      Path<pb::LagMemberOperationProto, LagMemberOperation> lag;
      for (std::uint8_t round = 0; Clock::now() < end; round ^= 1) {
        const Values values{thread, round};
        failures += !zorid.Runs(shared.zorid, values.Id(9));
        failures += !entry.Runs(shared.entry, values.Entry());
        failures += !shut.Runs(shared.shut, values.Shut());
        failures += !block.Runs(shared.block, values.Block());
        failures += !client.Runs(shared.client, values.Client());
        failures += !lag.Runs(shared.lag, values.Lag());
        ++rounds;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0);
  EXPECT_GE(rounds, kThreads);
}

}  // namespace
