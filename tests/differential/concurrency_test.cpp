// Many threads convert different values into destinations of their own at the same time. A variable
// that they share inside a converter is a difference from the oracle here, or a race under
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
#include "tests/differential/part_converters.h"

namespace pb = zorl2::protobuf;

using proof::Generator;

namespace {

// So many elements that threads often are at the same place of a list.
template <typename Model>
Model Lengthen(const Model& model) {
  return model;
}
oracle::Entry Lengthen(oracle::Entry entry) {
  const oracle::Block block{static_cast<std::int32_t>(entry.blockInfo.size() % 13), 1};
  entry.blockInfo.insert(entry.blockInfo.end(), 100, block);
  return entry;
}

// Both directions of one pair, into used destinations.
template <typename Converter, typename Message, typename Model, typename Record>
std::string Difference(Generator& generator, Model (Generator::*message)(),
                       Record (Generator::*record)()) {
  const Model model = Lengthen((generator.*message)());
  const Record native = (generator.*record)();
  Message source;
  proof::Fill(model, source);
  const std::string difference =
      proof::DifferenceToNative<Converter>(model, source, (generator.*record)());
  return difference + proof::DifferenceToMessage<Converter>(native, model, source);
}

TEST(Concurrency, ThreadsThatConvertDifferentValuesDoNotDisturbEachOther) {
  google::protobuf::SetLogHandler(nullptr);
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::seconds(1);
  std::atomic<bool> differs{false};
  std::vector<std::string> differences(8);
  std::vector<int> rounds(differences.size());
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < differences.size(); ++thread) {
    threads.emplace_back([&, thread] {
      Generator g(thread);
      std::string& found = differences[thread];
      for (; Clock::now() < end && !differs; ++rounds[thread]) {
        g.DrawDamage();
        found +=
            Difference<ZORIDConverter, pb::Zorid>(g, &Generator::Zorid, &Generator::NativeZorid);
        found += Difference<IntfEntryConverter, pb::IntfEntry>(g, &Generator::Entry,
                                                               &Generator::NativeEntry);
        found += Difference<ShutStateConverter, pb::ShutStateSync>(g, &Generator::ShutSignal,
                                                                   &Generator::NativeShut);
        found += Difference<BlockStateConverter, pb::BlockStateSync>(g, &Generator::BlockSignal,
                                                                     &Generator::NativeBlockSignal);
        found += Difference<ZORL2InfoClientConfigConverter, pb::InformationClient>(
            g, &Generator::Client, &Generator::NativeClient);
        found += Difference<LagMemberConverter, pb::LagMemberOperationProto>(g, &Generator::Lag,
                                                                             &Generator::NativeLag);
        found += Difference<proof::GeneralConverter, pb::GeneralInfo>(g, &Generator::General,
                                                                      &Generator::NativeGeneral);
        found += Difference<proof::TypeConverter, pb::TypeInfo>(g, &Generator::Type,
                                                                &Generator::NativeType);
        if (!found.empty()) differs = true;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t thread = 0; thread < differences.size(); ++thread) {
    EXPECT_EQ(differences[thread], "") << "thread " << thread;
    EXPECT_GT(rounds[thread], 0) << "thread " << thread;
  }
}

}  // namespace
