// Many threads share the converters and convert different values into used destinations of their
// own. A variable that the converters share between threads gives a wrong value, or a race under
// ThreadSanitizer.
#include <google/protobuf/stubs/logging.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/differential/compare.h"
#include "tests/differential/generate.h"

namespace pb = zorl2::protobuf;

using proof::Generator;

namespace {

// Long texts, lists and maps, so that threads are often at the same place of a converter.
template <typename Record>
void Lengthen(Record&, Generator&) {}
void Lengthen(ZORL2InfoClientConfig& record, Generator& g) {
  record.token.assign(2000 + g.Below(2000), static_cast<char>('a' + g.Below(26)));
}
void Lengthen(oracle::EntryRecord& record, Generator& g) {
  record.generalInfo.intf_name.assign(2000, static_cast<char>('a' + g.Below(26)));
  const auto protocol = static_cast<ProtocolType>(g.Below(13));
  record.blockInfo.insert(record.blockInfo.end(), 50, {protocol, BLOCK_STATE_BLOCK});
}
void Lengthen(ShutStateInfoSyncSignal& record, Generator& g) {
  for (int i = 0; i < 50; ++i) {
    zorid_t id;
    for (std::uint8_t& octet : id.octets) octet = static_cast<std::uint8_t>(g.Below(256));
    record.shutStates[id] = true;
  }
}

// Conversions merge into these containers, so they are emptied first.
void Empty(ShutStateInfoSyncSignal& signal) { signal.shutStates.clear(); }
void Empty(BlockStateInfoSyncSignal& signal) { signal.blockStates.clear(); }
void Empty(ZORL2InfoClientConfig& config) { config.interfaceCategories.clear(); }
template <typename Native>
void Empty(Native&) {}

// The inputs of one thread for one converter, and the destinations that it uses again and again.
template <typename Message, typename Native>
class Path {
 public:
  // `record` draws the inputs. The oracle gives the message of each.
  template <typename Record>
  Path(Generator& generator, Record (Generator::*record)()) {
    while (inputs_.size() < 8) {
      Record drawn = (generator.*record)();
      Lengthen(drawn, generator);
      decltype(proof::Read(Message())) model;
      if (oracle::ToMessage(drawn, model) != oracle::Outcome::kTrue) continue;
      Input& input = inputs_.emplace_back();
      input.record = proof::Native(drawn);
      proof::Fill(model, input.message);
      input.bytes = proof::Encode(model);
    }
  }

  // Both directions give the expected bytes.
  bool Run(Converter<Message, Native>& converter, std::size_t round) {
    const Input& input = inputs_[round % inputs_.size()];
    Empty(native_);
    return converter.Convert(input.record, sent_) && sent_.SerializeAsString() == input.bytes &&
           converter.Convert(input.message, native_) && converter.Convert(native_, sent_) &&
           sent_.SerializeAsString() == input.bytes;
  }

 private:
  struct Input {
    Native record;
    Message message;
    std::string bytes;
  };
  std::vector<Input> inputs_;
  Message sent_;
  Native native_;
};

TEST(Concurrency, ThreadsThatConvertDifferentValuesDoNotDisturbEachOther) {
  // Text that is not UTF-8 is a legal input, so the runtime's log of it is suppressed.
  google::protobuf::SetLogHandler(nullptr);
  ZORIDConverter zorids;
  IntfEntryConverter entries;
  ShutStateConverter shuts;
  BlockStateConverter blocks;
  ZORL2InfoClientConfigConverter clients;
  LagMemberConverter lags;
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::seconds(1);
  std::atomic<long> rounds{0}, failures{0};
  std::vector<std::thread> threads;
  for (std::uint64_t seed = 0; seed < 8; ++seed) {
    threads.emplace_back([&, seed] {
      Generator g(seed);
      Path<pb::Zorid, zorid_t> zorid(g, &Generator::NativeZorid);
      Path<pb::IntfEntry, IntfEntry> entry(g, &Generator::NativeEntry);
      Path<pb::ShutStateSync, ShutStateInfoSyncSignal> shut(g, &Generator::NativeShut);
      Path<pb::BlockStateSync, BlockStateInfoSyncSignal> block(g, &Generator::NativeBlockSignal);
      Path<pb::InformationClient, ZORL2InfoClientConfig> client(g, &Generator::NativeClient);
      Path<pb::LagMemberOperationProto, LagMemberOperation> lag(g, &Generator::NativeLag);
      std::size_t round = 0;
      do {
        ++round;
        failures += !zorid.Run(zorids, round);
        failures += !entry.Run(entries, round);
        failures += !shut.Run(shuts, round);
        failures += !block.Run(blocks, round);
        failures += !client.Run(clients, round);
        failures += !lag.Run(lags, round);
        ++rounds;
      } while (Clock::now() < end);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, 0) << "in " << rounds << " rounds";
}

}  // namespace
